#include "z7cashflow/model/modPublic.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <string_view>
#include <utility>

namespace z7::cashflow::modPublic {

namespace {

constexpr const char* chinese = "zh-CN";

std::string lookUp(const std::string& key, const std::vector<Variant>& arguments) {
    const Context& state = context();
    if (!state.textLookup) {
        ShowMessage("请传入Login对象", 0, "", "", 0);
        return {};
    }
    if (arguments.empty()) {
        return state.textLookup->Text(key);
    }
    if (!state.formattedTextLookup) {
        raisePlatformError(errors::objectNotSet, "the login gave no formatted texts");
    }
    return state.formattedTextLookup->Text(key, arguments);
}

void replaceAll(std::string& text, char character, std::string_view replacement) {
    for (std::size_t at = text.find(character); at != std::string::npos;
         at = text.find(character, at + replacement.size())) {
        text.replace(at, 1, replacement);
    }
}

} // namespace

Context& context() noexcept {
    thread_local Context state;
    return state;
}

std::shared_ptr<Z7Login> GetLogin() { return context().login; }

Z7Login& RequiredLogin() {
    Z7Login* login = context().login.get();
    if (login == nullptr) {
        raisePlatformError(errors::objectNotSet, "no login has been set");
    }
    return *login;
}

void SetLogin(std::shared_ptr<Z7Login> login) {
    Context& state = context();
    state.login = std::move(login);
    if (state.login) {
        state.textLookup = state.login->TextLookup();
        state.formattedTextLookup = state.login->FormattedTextLookup();
    }
}

std::int16_t GetIYear() {
    // The login's year is read even where an override stands, so that a missing login never goes unnoticed.
    const std::string year = RequiredLogin().AccountingYear();
    const std::int16_t override = context().yearOverride;
    return override == 0 ? toInt16(year) : override;
}

void SetIYear(std::int16_t value) { context().yearOverride = value; }

std::string GetText(const std::string& key, const std::vector<Variant>& arguments) {
    try {
        return lookUp(key, arguments);
    } catch (const Error& failure) {
        ShowMessage(failure.description(), 0, "", "", 0);
        return {};
    }
}

std::string DirectionText(const std::string& text) {
    if (RequiredLogin().LanguageTag() == chinese) {
        return text;
    }
    if (text == "借") {
        return GetText("Z7.GL.USZZPUB.00011");
    }
    if (text == "贷") {
        return GetText("Z7.GL.USZZPUB.00012");
    }
    if (text == "平") {
        return GetText("Z7.GL.USZZPUB.00001");
    }
    return text;
}

std::int32_t ShowMessage(const std::string& prompt, std::int32_t buttons, const std::string& title,
                         const std::string& helpFile, std::int32_t helpContext) {
    Context& state = context();
    if (!state.messageBoxObject && state.createMessageBox) {
        state.messageBoxObject = state.createMessageBox();
    }
    const std::string locale = toText(RequiredLogin().LocaleId());
    if (!state.messageBoxObject) {
        raisePlatformError(errors::objectNotSet, "there is no message box to show: " + prompt);
    }
    state.messageBoxObject->Locale(locale);
    return state.messageBoxObject->Show(prompt, buttons, title, helpFile, helpContext);
}

std::string XmlEscape(const Variant& value) {
    std::string text = toTextOrEmpty(value);
    if (text.find_first_of("&><'\"") == std::string::npos) {
        return text;
    }
    // The ampersand comes first, so that the escapes made after it are not escaped again.
    replaceAll(text, '&', "&amp;");
    replaceAll(text, '>', "&gt;");
    replaceAll(text, '<', "&lt;");
    replaceAll(text, '\'', "&apos;");
    replaceAll(text, '"', "&quot;");
    return text;
}

void DebugText(const std::string& text) {
    if (const auto& sink = context().debugSink) {
        sink(text);
    }
}

void RaiseCashFlowError(int number, const std::string& description) { throw Error(number, "CashFlow", description); }

} // namespace z7::cashflow::modPublic
