#include "host/windows/wideText.h"

#include <windows.h>

#include <algorithm>

namespace z7::cashflow::host {

std::wstring wideText(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(size == 0 ? 0 : MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
        L'\0');
    if (!wide.empty()) {
        MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    }
    return wide;
}

std::string utf8Text(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const int needed = size == 0 ? 0 : WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(needed), '\0');
    if (!narrow.empty()) {
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), needed, nullptr, nullptr);
    }
    return narrow;
}

std::size_t incompleteBytes(std::string_view text) noexcept {
    constexpr std::size_t longestBeginning = 3;
    for (std::size_t back = 1; back <= std::min(text.size(), longestBeginning); ++back) {
        const auto byte = static_cast<unsigned char>(text[text.size() - back]);
        if (byte >= 0xC0U) {
            const std::size_t length = byte >= 0xF0U ? 4 : byte >= 0xE0U ? 3 : 2;
            return back < length ? back : 0;
        }
        if (byte < 0x80U) {
            break;
        }
    }
    return 0;
}

} // namespace z7::cashflow::host
