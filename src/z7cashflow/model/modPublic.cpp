#include "z7cashflow/model/modPublic.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <array>
#include <atomic>
#include <iostream>
#include <string_view>
#include <utility>

namespace z7::cashflow::modPublic {

namespace {

constexpr const char* chinese = "zh-CN";

// A host without a user interface has its messages on the error stream, and no question is answered with yes.
std::int32_t reportWithoutBox(const std::string& prompt, std::int32_t buttons, const std::string& title) {
    constexpr std::int32_t buttonSet = 15;
    constexpr std::int32_t yesNo = 4;
    constexpr std::int32_t ok = 1;
    constexpr std::int32_t no = 7;
    std::cerr << title << (title.empty() ? "" : ": ") << prompt << '\n';
    return (buttons & buttonSet) == yesNo ? no : ok;
}

std::string lookUp(const std::string& key, const std::vector<Variant>& arguments) {
    const Context& state = context();
    if (!state.textLookup) {
        ShowMessage("请传入Login对象", 0, "", "", 0);
        return {};
    }
    if (arguments.empty()) {
        return state.textLookup->text(key);
    }
    if (!state.formattedTextLookup) {
        raisePlatformError(Reason::formattedTextsMissing);
    }
    return state.formattedTextLookup->text(key, arguments);
}

// The escape of a character in XML text; empty where none is needed.
std::string_view escapeOf(char c) {
    switch (c) {
    case '&':
        return "&amp;";
    case '>':
        return "&gt;";
    case '<':
        return "&lt;";
    case '\'':
        return "&apos;";
    case '"':
        return "&quot;";
    default:
        return {};
    }
}

// Which characters have an escape: a look-up per character, since nearly none has one.
constexpr auto isEscaped = [] {
    std::array<bool, 256> table{};
    for (const unsigned char c : {'&', '>', '<', '\'', '"'}) {
        table[c] = true;
    }
    return table;
}();

void appendEscaped(std::string& out, std::string_view text) {
    std::size_t plain = 0; // where the characters begin that need no escape
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isEscaped[static_cast<unsigned char>(text[at])]) {
            out += text.substr(plain, at - plain);
            out += escapeOf(text[at]);
            plain = at + 1;
        }
    }
    out += text.substr(plain);
}

// A null pointer stands for the library's own store. Set once, before other threads look at it.
constinit std::atomic<ContextStore> hostsStore = nullptr;

// A function of its own: where a host keeps the contexts, no thread may get this one, whose destructor the system would
// have to call at the end of the thread.
Context& ownContext() noexcept {
    thread_local Context state;
    return state;
}

} // namespace

Context& context() noexcept {
    const ContextStore hosts = hostsStore.load(std::memory_order_relaxed);
    return hosts != nullptr ? hosts() : ownContext();
}

void keepContextsIn(ContextStore store) noexcept { hostsStore.store(store, std::memory_order_relaxed); }

std::shared_ptr<Z7Login> GetLogin() { return context().login; }

Z7Login& requiredLogin() {
    Z7Login* login = context().login.get();
    if (login == nullptr) {
        raisePlatformError(Reason::loginMissing);
    }
    return *login;
}

void SetLogin(std::shared_ptr<Z7Login> login) {
    Context& state = context();
    state.login = std::move(login);
    if (state.login) {
        state.literalPolicy = state.login->guardsStatements() ? statements::LiteralPolicy::wholeLiterals
                                                              : statements::LiteralPolicy::asGiven;
        state.textLookup = state.login->TextLookup();
        state.formattedTextLookup = state.login->FormattedTextLookup();
    }
}

std::int16_t GetIYear() {
    // The login's year is read even where an override is set, so that a missing login never goes unnoticed.
    const std::string year = requiredLogin().accountingYear();
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
    if (requiredLogin().languageTag() == chinese) {
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
    const std::string locale = toText(requiredLogin().LocaleId());
    if (!state.messageBoxObject) {
        return reportWithoutBox(prompt, buttons, title);
    }
    state.messageBoxObject->locale(locale);
    return state.messageBoxObject->Show(prompt, buttons, title, helpFile, helpContext);
}

std::string XmlEscape(const Variant& value) {
    std::string text;
    appendXmlEscaped(text, value);
    return text;
}

void appendXmlEscaped(std::string& out, const Variant& value) {
    if (const auto* text = value.get<std::string>()) {
        appendEscaped(out, *text);
    } else if (!value.isNull()) {
        out += toText(value); // no number and no date has a character to escape
    }
}

void debugText(const std::string& text) {
    if (const auto& sink = context().debugSink) {
        ignoringErrors([&] { sink(text); });
    }
}

void raiseCashFlowError(int number, const std::string& description, Explanation why) {
    throw Error(number, "CashFlow", description, std::move(why));
}

} // namespace z7::cashflow::modPublic
