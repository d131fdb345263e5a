#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace z7::cashflow::host {

/// The name of an enumeration's value as it stands in the source, such as "fileMissing". The compiler supplies it, so
/// that there is no second list of the names to keep up to date.
template <auto Value> constexpr std::string_view enumName() noexcept {
#ifdef _MSC_VER
    constexpr std::string_view signature = __FUNCSIG__;
    constexpr std::string_view mark = "enumName<";
    constexpr std::string_view ends = ">";
#else
    constexpr std::string_view signature = __PRETTY_FUNCTION__;
    constexpr std::string_view mark = "Value = ";
    constexpr std::string_view ends = ";]";
#endif
    constexpr std::size_t first = signature.find(mark) + mark.size();
    constexpr std::string_view whole = signature.substr(first, signature.find_first_of(ends, first) - first);
    return whole.substr(whole.rfind(':') + 1);
}

/// The names of an enumeration that ends in "count", in its order.
template <class Id> inline constexpr auto enumNames = []<std::size_t... Place>(std::index_sequence<Place...>) {
    return std::array<std::string_view, sizeof...(Place)>{enumName<static_cast<Id>(Place)>()...};
}
(std::make_index_sequence<static_cast<std::size_t>(Id::count)>());

/// A name as a word for programs: "fileMissing" is "file-missing".
[[nodiscard]] inline std::string wordOf(std::string_view name) {
    std::string word;
    for (const char c : name) {
        const bool upper = c >= 'A' && c <= 'Z';
        word += upper ? std::string{'-', static_cast<char>(c - 'A' + 'a')} : std::string(1, c);
    }
    return word;
}

} // namespace z7::cashflow::host
