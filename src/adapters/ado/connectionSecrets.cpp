#include "adapters/ado/connectionSecrets.h"

#include "adapters/shared/session/ConnectionText.h"

#include <cstddef>

namespace z7::cashflow::ado {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

char closingOf(char opening) { return opening == '{' ? '}' : opening == '"' || opening == '\'' ? opening : '\0'; }

/// Where a value ends that is enclosed in quotes or braces; a doubled end mark is part of the value.
std::size_t endOfEnclosed(std::string_view text, char closing) {
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == closing) {
            if (at + 1 < text.size() && text[at + 1] == closing) {
                ++at;
            } else {
                return at;
            }
        }
    }
    return std::string_view::npos;
}

/// Removes the value at the front of the rest, up to its semicolon, and returns it as the drivers see it and as
/// written.
std::vector<std::string> takeValue(std::string_view& rest) {
    const std::size_t first = rest.find_first_not_of(" \t\r\n");
    rest.remove_prefix(first == std::string_view::npos ? rest.size() : first);
    const char closing = rest.empty() ? '\0' : closingOf(rest.front());
    const std::size_t end = closing == '\0' ? std::string_view::npos : endOfEnclosed(rest, closing);
    std::vector<std::string> forms;
    if (end != std::string_view::npos) {
        const std::string_view written = rest.substr(1, end - 1);
        std::string value;
        for (std::size_t at = 0; at < written.size(); ++at) {
            value += written[at];
            at += written[at] == closing ? 1 : 0;
        }
        forms = {std::string(written), value};
        rest.remove_prefix(end + 1);
    }
    const std::size_t semicolon = rest.find(';');
    if (forms.empty()) {
        forms.emplace_back(trimmed(rest.substr(0, semicolon)));
    }
    rest.remove_prefix(semicolon == std::string_view::npos ? rest.size() : semicolon);
    return forms;
}

} // namespace

std::vector<std::string> secretsOf(std::string_view connectionString) {
    std::vector<std::string> secrets;
    std::string_view rest = connectionString;
    while (!rest.empty()) {
        const std::size_t mark = rest.find_first_of("=;");
        if (mark == std::string_view::npos) {
            break;
        }
        const std::string_view keyword = trimmed(rest.substr(0, mark));
        const bool hasValue = rest[mark] == '=';
        rest.remove_prefix(mark + 1);
        if (!hasValue) {
            continue;
        }
        for (std::string& value : takeValue(rest)) {
            if (!value.empty() && shared::namesSecret(keyword)) {
                secrets.push_back(std::move(value));
            }
        }
    }
    return secrets;
}

std::string withoutSecrets(std::string text, const std::vector<std::string>& secrets) {
    constexpr std::string_view mask = "***";
    for (const std::string& secret : secrets) {
        for (std::size_t at = 0; (at = text.find(secret, at)) != std::string::npos; at += mask.size()) {
            text.replace(at, secret.size(), mask);
        }
    }
    return text;
}

} // namespace z7::cashflow::ado
