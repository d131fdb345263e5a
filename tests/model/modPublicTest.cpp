#include "z7cashflow/model/modPublic.h"
#include "doubles/ContextGuard.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <thread>

namespace z7::cashflow::test {
namespace {

using Lines = std::vector<std::string>;

class NoLogin : public ContextTest {};
class LoginContext : public LoginTest {};

TEST_F(NoLogin, TheContextIsEmptyAtFirst) {
    const auto& context = modPublic::context();
    EXPECT_EQ(modPublic::GetLogin(), nullptr);
    EXPECT_EQ(context.textLookup, nullptr);
    EXPECT_EQ(context.messageBoxObject, nullptr);
    EXPECT_EQ(context.yearOverride, 0);
    EXPECT_EQ(context.VouchState, 0);
    EXPECT_EQ(context.CurUserName, "");
    EXPECT_FALSE(context.bCashCode);
    EXPECT_FALSE(context.bAutoDisplay);
    EXPECT_FALSE(context.bXJLL);
    EXPECT_FALSE(context.iUpdateCashFlow);
}

modPublic::Context& hostsContext() noexcept {
    static modPublic::Context kept;
    return kept;
}

TEST_F(NoLogin, AHostMayKeepTheContexts) {
    modPublic::SetIYear(2012);
    modPublic::keepContextsIn(hostsContext);
    modPublic::SetIYear(2013);
    EXPECT_EQ(&modPublic::context(), &hostsContext());
    modPublic::keepContextsIn(nullptr);
    EXPECT_EQ(hostsContext().yearOverride, 2013);
    EXPECT_EQ(modPublic::context().yearOverride, 2012) << "the library's own store is as it was";
}

TEST_F(NoLogin, ATextCannotBeFoundAndTheMissingLoginIsTheCallersError) {
    const auto box = std::make_shared<RecordingMessageBox>();
    modPublic::context().createMessageBox = [box] { return box; };
    EXPECT_ERROR(modPublic::GetText("Z7.CW.GL.CashFlow.00017"), errors::objectNotSet);
    EXPECT_EQ(box->log, Lines{});
    EXPECT_EQ(modPublic::context().messageBoxObject, box) << "the box is made before its language is asked for";
}

TEST_F(NoLogin, EverythingThatNeedsTheLoginSaysSo) {
    EXPECT_ERROR(modPublic::GetIYear(), errors::objectNotSet);
    modPublic::SetIYear(2013);
    EXPECT_ERROR(modPublic::GetIYear(), errors::objectNotSet);
    EXPECT_ERROR(modPublic::DirectionText("借"), errors::objectNotSet);
    EXPECT_ERROR(modPublic::ShowMessage("text", 0, "", "", 0), errors::objectNotSet);
}

TEST_F(NoLogin, SetLoginTakesTheTwoTextServicesInTheirOrder) {
    const auto login = std::make_shared<FakeLogin>();
    modPublic::SetLogin(login);
    EXPECT_EQ(login->calls, (Lines{"TextLookup", "FormattedTextLookup"}));
    EXPECT_EQ(modPublic::GetLogin(), login);
    EXPECT_EQ(modPublic::context().textLookup, login->texts);
    EXPECT_EQ(modPublic::context().formattedTextLookup, login->formattedTexts);
}

TEST_F(NoLogin, SetLoginLetsAFailureOfTheLoginThrough) {
    const auto login = std::make_shared<FakeLogin>();
    login->textLookupFailure = Error(438, "host", "no texts");
    EXPECT_ERROR(modPublic::SetLogin(login), 438);
    EXPECT_EQ(modPublic::GetLogin(), login);
    EXPECT_EQ(modPublic::context().textLookup, nullptr);

    const auto second = std::make_shared<FakeLogin>();
    second->formattedTextLookupFailure = Error(439, "host", "no formatted texts");
    EXPECT_ERROR(modPublic::SetLogin(second), 439);
    EXPECT_EQ(modPublic::context().textLookup, second->texts);
    EXPECT_EQ(modPublic::context().formattedTextLookup, nullptr);
}

TEST_F(LoginContext, WithoutALoginTheTextServicesStay) {
    modPublic::SetLogin(nullptr);
    EXPECT_EQ(modPublic::GetLogin(), nullptr);
    EXPECT_EQ(modPublic::GetText("key"), "<key>");
}

TEST_F(LoginContext, ASecondLoginReplacesTheFirstAndItsTexts) {
    const auto second = std::make_shared<FakeLogin>();
    second->texts->texts["key"] = "second";
    second->answers.accountingYear = "2020";
    modPublic::SetLogin(second);
    EXPECT_EQ(modPublic::GetText("key"), "second");
    EXPECT_EQ(modPublic::GetIYear(), 2020);
}

TEST_F(LoginContext, TheYearIsTheLoginsUnlessOverridden) {
    EXPECT_EQ(modPublic::GetIYear(), 2013);
    modPublic::SetIYear(2011);
    EXPECT_EQ(modPublic::GetIYear(), 2011);
    login->answers.accountingYear = "2012";
    EXPECT_EQ(modPublic::GetIYear(), 2011);
    modPublic::SetIYear(0);
    EXPECT_EQ(modPublic::GetIYear(), 2012);
}

TEST_F(LoginContext, TheLoginsYearIsReadEvenUnderAnOverride) {
    modPublic::SetIYear(2011);
    (void)modPublic::GetIYear();
    EXPECT_EQ(login->calls, Lines{"accountingYear"});
}

TEST_F(LoginContext, AYearThatIsNotANumberIsTheCallersErrorUnlessOverridden) {
    login->answers.accountingYear = "MMXIII";
    EXPECT_ERROR(modPublic::GetIYear(), errors::typeMismatch);
    login->answers.accountingYear = "";
    EXPECT_ERROR(modPublic::GetIYear(), errors::typeMismatch);
    login->answers.accountingYear = "40000";
    EXPECT_ERROR(modPublic::GetIYear(), errors::overflow);
    modPublic::SetIYear(2011);
    EXPECT_EQ(modPublic::GetIYear(), 2011);
}

TEST_F(LoginContext, ATextComesFromTheCatalogueWithoutArguments) {
    EXPECT_EQ(modPublic::GetText("key"), "<key>");
    EXPECT_EQ(modPublic::GetText("key", {}), "<key>");
    EXPECT_EQ(login->texts->asked, (Lines{"key", "key"}));
    EXPECT_TRUE(login->formattedTexts->asked.empty());
}

TEST_F(LoginContext, ATextWithArgumentsComesFromTheFormattedCatalogue) {
    EXPECT_EQ(modPublic::GetText("key", {Variant("")}), "<key:1>");
    EXPECT_EQ(modPublic::GetText("key", {Variant("a"), Variant(Null{})}), "<key:2>");
    EXPECT_TRUE(login->texts->asked.empty());
    ASSERT_EQ(login->formattedTexts->asked.size(), 2U);
    EXPECT_EQ(login->formattedTexts->asked[1].second, (std::vector<Variant>{Variant("a"), Variant()}));
}

TEST_F(LoginContext, ABadKeyShowsItsFailureAndReturnsTheEmptyText) {
    login->texts->failure = Error(1234, "catalogue", "no such key");
    EXPECT_EQ(modPublic::GetText("key"), "");
    EXPECT_EQ(messages->log, (Lines{"Locale 2052", "Show no such key|0|||0"}));
    messages->log.clear();
    login->formattedTexts->failure = Error(1234, "catalogue", "no such formatted key");
    EXPECT_EQ(modPublic::GetText("key", {Variant("")}), "");
    EXPECT_EQ(messages->log, (Lines{"Locale 2052", "Show no such formatted key|0|||0"}));
}

TEST_F(LoginContext, WithoutACatalogueTheUserIsToldToLogIn) {
    modPublic::context().textLookup = nullptr;
    EXPECT_EQ(modPublic::GetText("key"), "");
    EXPECT_EQ(messages->log, (Lines{"Locale 2052", "Show 请传入Login对象|0|||0"}));
}

TEST_F(LoginContext, TheMessageBoxIsMadeOnceAndToldTheLanguageEachTime) {
    int made = 0;
    modPublic::context().createMessageBox = [&] {
        ++made;
        return messages;
    };
    messages->answers = {6, 7};
    EXPECT_EQ(modPublic::ShowMessage("first", 36, "title", "help", 5), 6);
    login->localeId = 1033;
    EXPECT_EQ(modPublic::ShowMessage("second", 16, "", "", 0), 7);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(messages->log, (Lines{"Locale 2052", "Show first|36|title|help|5", "Locale 1033", "Show second|16|||0"}));
    EXPECT_EQ(modPublic::context().messageBoxObject, messages);
}

TEST_F(LoginContext, WithoutAMakerMessagesGoToTheErrorStreamAndNoQuestionIsAnsweredWithYes) {
    modPublic::context().createMessageBox = nullptr;
    testing::internal::CaptureStderr();
    EXPECT_EQ(modPublic::ShowMessage("text", 0, "", "", 0), 1);
    EXPECT_EQ(modPublic::ShowMessage("notice", 64, "title", "", 0), 1);
    EXPECT_EQ(modPublic::ShowMessage("delete?", 36, "title", "", 0), 7);
    EXPECT_EQ(modPublic::ShowMessage("really?", 292, "", "", 0), 7);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "text\ntitle: notice\ntitle: delete?\nreally?\n");
    EXPECT_EQ(modPublic::context().messageBoxObject, nullptr) << "a maker that comes later is asked";
}

TEST_F(LoginContext, ABadKeyRaisesNothingWithoutAMakerEither) {
    modPublic::context().createMessageBox = nullptr;
    login->texts->failure = Error(1, "catalogue", "no such text");
    testing::internal::CaptureStderr();
    EXPECT_EQ(modPublic::GetText("key"), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "no such text\n");
}

TEST_F(LoginContext, AnErrorOfTheDebugSinkHasNoEffect) {
    modPublic::context().debugSink = [](const std::string&) { throw Error(5, "host", "the log is full"); };
    EXPECT_NO_THROW(modPublic::debugText("111"));
}

TEST_F(LoginContext, DirectionsAreLeftAloneInChinese) {
    EXPECT_EQ(modPublic::DirectionText("借"), "借");
    EXPECT_EQ(modPublic::DirectionText("平"), "平");
    EXPECT_TRUE(login->texts->asked.empty());
}

TEST_F(LoginContext, DirectionsAreTranslatedUnderEveryOtherLanguageTag) {
    for (const char* tag : {"en-US", "zh-TW", "zh-cn", "ZH-CN", ""}) {
        login->answers.languageTag = tag;
        EXPECT_EQ(modPublic::DirectionText("借"), "<Z7.GL.USZZPUB.00011>") << tag;
        EXPECT_EQ(modPublic::DirectionText("贷"), "<Z7.GL.USZZPUB.00012>") << tag;
        EXPECT_EQ(modPublic::DirectionText("平"), "<Z7.GL.USZZPUB.00001>") << tag;
        EXPECT_EQ(modPublic::DirectionText("debit"), "debit") << tag;
        EXPECT_EQ(modPublic::DirectionText(""), "") << tag;
    }
}

TEST_F(NoLogin, XmlEscapeOfNullAndOfTheEmptyTextIsEmpty) {
    EXPECT_EQ(modPublic::XmlEscape(Null{}), "");
    EXPECT_EQ(modPublic::XmlEscape(""), "");
}

TEST_F(NoLogin, XmlEscapeReplacesTheFiveCharactersAndIgnoresEscapes) {
    EXPECT_EQ(modPublic::XmlEscape("a&b>c<d'e\"f"), "a&amp;b&gt;c&lt;d&apos;e&quot;f");
    EXPECT_EQ(modPublic::XmlEscape("&amp;"), "&amp;amp;");
    EXPECT_EQ(modPublic::XmlEscape("''&&"), "&apos;&apos;&amp;&amp;");
    EXPECT_EQ(modPublic::XmlEscape("借\r\n"), "借\r\n");
}

TEST_F(NoLogin, XmlEscapeTakesValuesAsText) {
    EXPECT_EQ(modPublic::XmlEscape(1234.5), "1234.5");
    EXPECT_EQ(modPublic::XmlEscape(true), "True");
    EXPECT_EQ(modPublic::XmlEscape(Date(41279.0)), "2013-01-05");
    EXPECT_EQ(modPublic::XmlEscape(std::uint8_t{7}), "7");
}

TEST_F(LoginContext, DebugTextsGoToTheSinkAlone) {
    modPublic::debugText("111");
    EXPECT_EQ(debugTexts, Lines{"111"});
    modPublic::context().debugSink = nullptr;
    modPublic::debugText("222");
    EXPECT_EQ(debugTexts, Lines{"111"});
}

TEST_F(NoLogin, ErrorsOfTheSystemCarryItsName) {
    const Error error = errorOf([] { modPublic::raiseCashFlowError(10008, "does not fit"); });
    EXPECT_EQ(error.number(), 10008);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "does not fit");
}

TEST_F(LoginContext, EveryThreadHasItsOwn) {
    modPublic::SetIYear(2011);
    modPublic::context().bCashCode = true;
    std::thread([&] {
        EXPECT_EQ(modPublic::GetLogin(), nullptr);
        EXPECT_FALSE(modPublic::context().bCashCode);
        EXPECT_EQ(modPublic::context().yearOverride, 0);
        const auto other = std::make_shared<FakeLogin>();
        other->answers.accountingYear = "1999";
        modPublic::SetLogin(other);
        modPublic::context().bAutoDisplay = true;
        EXPECT_EQ(modPublic::GetIYear(), 1999);
    }).join();
    EXPECT_EQ(modPublic::GetLogin(), login);
    EXPECT_EQ(modPublic::GetIYear(), 2011);
    EXPECT_FALSE(modPublic::context().bAutoDisplay);
}

TEST_F(LoginContext, AppendsEscapedTextToExistingText) {
    std::string text = "a='";
    modPublic::appendXmlEscaped(text, Variant("<&>"));
    modPublic::appendXmlEscaped(text, Variant());
    modPublic::appendXmlEscaped(text, Variant(1.5));
    EXPECT_EQ(text, "a='&lt;&amp;&gt;1.5");
}

TEST_F(LoginContext, ReturnsTheLoginIfItIsNeeded) {
    EXPECT_EQ(&modPublic::requiredLogin(), login.get());
    modPublic::context().login = nullptr;
    EXPECT_ERROR(modPublic::requiredLogin(), errors::objectNotSet);
}

TEST_F(LoginContext, AnotherLoginBetweenTwoBoxesKeepsTheBoxAndChangesItsLanguage) {
    int made = 0;
    modPublic::context().createMessageBox = [&, box = messages] {
        ++made;
        return box;
    };
    modPublic::ShowMessage("first", 0, "", "", 0);
    const auto english = std::make_shared<FakeLogin>();
    english->localeId = 1033;
    modPublic::SetLogin(english);
    modPublic::ShowMessage("second", 0, "", "", 0);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(messages->log,
              (std::vector<std::string>{"Locale 2052", "Show first|0|||0", "Locale 1033", "Show second|0|||0"}));
}

TEST_F(LoginContext, TheLoginDecidesWhetherStatementsAreGuarded) {
    using statements::LiteralPolicy;
    EXPECT_EQ(modPublic::context().literalPolicy, LiteralPolicy::asGiven);
    login->guards = true;
    EXPECT_EQ(modPublic::context().literalPolicy, LiteralPolicy::asGiven) << "it is asked when it is set";
    modPublic::SetLogin(login);
    EXPECT_EQ(modPublic::context().literalPolicy, LiteralPolicy::wholeLiterals);
    modPublic::SetLogin(nullptr);
    EXPECT_EQ(modPublic::context().literalPolicy, LiteralPolicy::wholeLiterals) << "as the text services stay";
    login->guards = false;
    modPublic::SetLogin(login);
    EXPECT_EQ(modPublic::context().literalPolicy, LiteralPolicy::asGiven);
    login->guards = true;
    login->textLookupFailure = Error(7, "host", "no texts");
    EXPECT_ERROR((modPublic::SetLogin(login), 0), 7);
    EXPECT_EQ(modPublic::context().literalPolicy, LiteralPolicy::wholeLiterals) << "a login that fails guards as well";
}

} // namespace
} // namespace z7::cashflow::test
