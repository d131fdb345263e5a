#include "standins/HostLogin.h"

#include "adapters/ado/hostNames.h"

#include <utility>

namespace z7::cashflow::test {

namespace {

namespace names = ado::names;

constexpr IID loginKind{0x5a370007, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};
constexpr IID textsKind{0x5a370008, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};

class HostTexts final : public AutomationObject {
public:
    HostTexts(std::shared_ptr<CallPlan> plan, std::shared_ptr<TextLookup> texts)
        : AutomationObject(std::move(plan), textsKind), texts_(std::move(texts)) {
        method(names::text, [this](const Call& call) { return OwnedVariant(texts_->text(call.text(0))); });
    }

private:
    std::shared_ptr<TextLookup> texts_;
};

class HostFormattedTexts final : public AutomationObject {
public:
    HostFormattedTexts(std::shared_ptr<CallPlan> plan, std::shared_ptr<FormattedTextLookup> texts)
        : AutomationObject(std::move(plan), textsKind), texts_(std::move(texts)) {
        method(names::text,
               [this](const Call& call) { return OwnedVariant(texts_->text(call.text(0), call.elements(1))); });
    }

private:
    std::shared_ptr<FormattedTextLookup> texts_;
};

} // namespace

HostLogin::HostLogin(std::shared_ptr<CallPlan> plan, std::shared_ptr<Z7Login> login,
                     const std::set<std::wstring>& absent)
    : AutomationObject(std::move(plan), loginKind), login_(std::move(login)), absent_(absent) {
    add(names::localeId, [this](const Call&) { return OwnedVariant(login_->LocaleId()); });
    add(names::accountId, [this](const Call&) { return OwnedVariant(login_->accountId()); });
    add(names::accountingYear, [this](const Call&) { return OwnedVariant(login_->accountingYear()); });
    add(names::userId, [this](const Call&) { return OwnedVariant(login_->userId()); });
    add(names::operatorName, [this](const Call&) { return OwnedVariant(login_->operatorName()); });
    add(names::connectionString, [this](const Call&) { return OwnedVariant(login_->ConnectionString()); });
    add(names::information, [this](const Call& call) { return OwnedVariant(login_->information(call.number(0))); });
    add(names::languageTag, [this](const Call&) { return OwnedVariant(login_->languageTag()); });
    add(names::textLookup,
        [this](const Call&) { return asValue(makeObject<HostTexts>(this->plan(), login_->TextLookup())); });
    add(names::formattedTextLookup, [this](const Call&) {
        return asValue(makeObject<HostFormattedTexts>(this->plan(), login_->FormattedTextLookup()));
    });
}

void HostLogin::add(const wchar_t* name, Handler get) {
    if (!absent_.contains(name)) {
        property(name, std::move(get));
    }
}

WrongLogin::WrongLogin(std::shared_ptr<CallPlan> plan, OwnedVariant answer)
    : AutomationObject(std::move(plan), loginKind) {
    for (const wchar_t* name : {names::localeId, names::accountId, names::accountingYear, names::userId,
                                names::operatorName, names::connectionString, names::information, names::languageTag,
                                names::textLookup, names::formattedTextLookup, names::text}) {
        property(name, [answer](const Call&) { return answer; });
    }
}

} // namespace z7::cashflow::test
