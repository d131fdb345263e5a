#include "host/windows/ConsoleInputBuffer.h"

#include "host/windows/wideText.h"

#include <windows.h>

#include <array>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t mostAtOnce = 4096;
constexpr wchar_t endOfInput = 0x1A; // Ctrl+Z

} // namespace

ConsoleInputBuffer::int_type ConsoleInputBuffer::underflow() {
    std::array<wchar_t, mostAtOnce> part{};
    DWORD size = 0;
    do {
        if (ReadConsoleW(handle_, part.data(), static_cast<DWORD>(part.size()), &size, nullptr) == 0 || size == 0 ||
            part[0] == endOfInput) {
            return traits_type::eof();
        }
        std::wstring text = begun_ + std::wstring(part.data(), size);
        begun_.clear();
        if (IS_HIGH_SURROGATE(text.back())) {
            begun_.assign(1, text.back());
            text.pop_back();
        }
        std::erase(text, L'\r');
        read_ = utf8Text(text);
    } while (read_.empty());
    setg(read_.data(), read_.data(), read_.data() + read_.size());
    return traits_type::to_int_type(read_.front());
}

} // namespace z7::cashflow::host
