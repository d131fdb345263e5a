#include "adapters/ado/Login.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/hostNames.h"
#include "adapters/conformance/DatabaseUnderTest.h"
#include "doubles/FakeLogin.h"
#include "standins/HostLogin.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

namespace names = ado::names;
using conformance::errorOf;

/// A member of the login and how the library reads it.
struct Member {
    const wchar_t* name;
    std::function<void(ado::Login&)> read;
};

const std::vector<Member>& members() {
    static const std::vector<Member> all{
        {names::localeId, [](ado::Login& login) { login.LocaleId(); }},
        {names::accountId, [](ado::Login& login) { login.accountId(); }},
        {names::accountingYear, [](ado::Login& login) { login.accountingYear(); }},
        {names::userId, [](ado::Login& login) { login.userId(); }},
        {names::operatorName, [](ado::Login& login) { login.operatorName(); }},
        {names::connectionString, [](ado::Login& login) { login.ConnectionString(); }},
        {names::information, [](ado::Login& login) { login.information(117); }},
        {names::languageTag, [](ado::Login& login) { login.languageTag(); }},
        {names::textLookup, [](ado::Login& login) { login.TextLookup(); }},
        {names::formattedTextLookup, [](ado::Login& login) { login.FormattedTextLookup(); }}};
    return all;
}

class LoginTest : public ::testing::Test {
protected:
    [[nodiscard]] ado::Login loginWithout(const std::set<std::wstring>& absent = {}) const {
        return ado::Login(Dispatch(makeObject<HostLogin>(plan_, fake_, absent).get()));
    }
    [[nodiscard]] ado::Login loginOf(OwnedVariant answer) const {
        return ado::Login(Dispatch(makeObject<WrongLogin>(plan_, std::move(answer)).get()));
    }

    std::shared_ptr<CallPlan> plan_ = std::make_shared<CallPlan>();
    std::shared_ptr<FakeLogin> fake_ = std::make_shared<FakeLogin>();
};

TEST_F(LoginTest, EveryMemberIsReadFromTheHostWhenItIsAskedFor) {
    fake_->answers.information[117] = Variant("政府会计制度");
    fake_->answers.operatorName = "出纳";
    ado::Login login = loginWithout();
    EXPECT_EQ(login.LocaleId(), 2052);
    EXPECT_EQ(login.accountId(), "001");
    EXPECT_EQ(login.accountingYear(), "2013");
    EXPECT_EQ(login.userId(), "u1");
    EXPECT_EQ(login.operatorName(), "出纳");
    EXPECT_EQ(login.ConnectionString(), "db=login");
    EXPECT_EQ(login.information(117), Variant("政府会计制度"));
    EXPECT_EQ(login.languageTag(), "zh-CN");
    EXPECT_EQ(fake_->calls,
              (std::vector<std::string>{"LocaleId", "accountId", "accountingYear", "userId", "operatorName",
                                        "ConnectionString", "information 117", "languageTag"}));
    fake_->answers.accountingYear = "2014";
    EXPECT_EQ(login.accountingYear(), "2014") << "nothing is remembered";
    EXPECT_FALSE(login.guardsStatements());
}

TEST_F(LoginTest, BothCataloguesReturnTheHostsTexts) {
    ado::Login login = loginWithout();
    fake_->texts->texts["k"] = "凭证";
    EXPECT_EQ(login.TextLookup()->text("k"), "凭证");
    const std::vector<Variant> arguments{Variant("a"), Variant(std::int32_t{7}), Variant(), Variant(1.5)};
    EXPECT_EQ(login.FormattedTextLookup()->text("f", arguments), "<f:4>");
    ASSERT_EQ(fake_->formattedTexts->asked.size(), 1U);
    EXPECT_EQ(fake_->formattedTexts->asked[0].second, arguments);
    EXPECT_EQ(login.FormattedTextLookup()->text("f", {}), "<f:0>");
}

TEST_F(LoginTest, ACatalogueOutlivesTheLogin) {
    const auto texts = loginWithout().TextLookup();
    EXPECT_EQ(texts->text("k"), "<k>");
}

TEST_F(LoginTest, AnErrorOfACatalogueKeepsItsNumberAndText) {
    fake_->texts->failure = Error(5, "Catalogue", "no such key");
    ado::Login login = loginWithout();
    const Error error = errorOf([&] { login.TextLookup()->text("k"); });
    EXPECT_EQ(error.number(), 5);
    EXPECT_EQ(error.source(), "Catalogue");
    EXPECT_EQ(error.description(), "no such key");
}

TEST_F(LoginTest, AMissingMemberIsNamed) {
    for (const Member& member : members()) {
        ado::Login login = loginWithout({member.name});
        const Error error = errorOf([&] { member.read(login); });
        EXPECT_EQ(error.number(), 438);
        EXPECT_NE(error.description().find(adapters::automation::utf8(member.name)), std::string::npos)
            << error.description();
    }
}

TEST_F(LoginTest, AFailureOfTheHostIsAnErrorForEveryMember) {
    for (const Member& member : members()) {
        ado::Login login = loginWithout();
        plan_->failAt(1, {E_ACCESSDENIED, "Host", "closed", true});
        const Error error = errorOf([&] { member.read(login); });
        EXPECT_EQ(error.number(), static_cast<int>(E_ACCESSDENIED));
        EXPECT_EQ(error.description(), "closed");
    }
}

TEST_F(LoginTest, ValuesOfTheWrongTypeAreRefused) {
    for (const Member& member : members()) {
        if (member.name == names::information) {
            continue; // takes every value
        }
        ado::Login login = loginOf(OwnedVariant(true));
        EXPECT_EQ(errorOf([&] { member.read(login); }).number(), 13);
        ado::Login nullLogin = loginOf(OwnedVariant(Variant()));
        const int expected = member.name == names::textLookup || member.name == names::formattedTextLookup ? 91 : 13;
        EXPECT_EQ(errorOf([&] { member.read(nullLogin); }).number(), expected);
    }
    ado::Login objects = loginOf(OwnedVariant(static_cast<IDispatch*>(nullptr)));
    EXPECT_EQ(errorOf([&] { objects.TextLookup(); }).number(), 91);
    EXPECT_EQ(errorOf([&] { objects.information(117); }).number(), 13) << "an object is not a value";
}

TEST_F(LoginTest, ANumberCountsAsItsDigitsAndDigitsAsANumber) {
    EXPECT_EQ(loginOf(OwnedVariant(std::int32_t{2013})).accountingYear(), "2013");
    EXPECT_EQ(loginOf(OwnedVariant("1033")).LocaleId(), 1033);
    EXPECT_EQ(loginOf(OwnedVariant(2052.0)).LocaleId(), 2052);
    EXPECT_EQ(errorOf([&] { loginOf(OwnedVariant(2052.5)).LocaleId(); }).number(), 13);
    EXPECT_EQ(errorOf([&] { loginOf(OwnedVariant("zh-CN")).LocaleId(); }).number(), 13);
    EXPECT_EQ(errorOf([&] { loginOf(OwnedVariant(1e300)).LocaleId(); }).number(), 13);
}

TEST_F(LoginTest, NothingIsNoLogin) {
    EXPECT_EQ(errorOf([] { const ado::Login login{Dispatch()}; }).number(), 91);
}

} // namespace
} // namespace z7::cashflow::test
