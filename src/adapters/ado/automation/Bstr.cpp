#include "adapters/ado/automation/Bstr.h"

#include "adapters/ado/automation/AutomationReason.h"
#include "z7cashflow/support/Error.h"

#include <limits>
#include <new>
#include <utility>

namespace z7::adapters::automation {

namespace {

/// The system counts characters as int, and UTF-8 needs up to three bytes for one of UTF-16.
int countOf(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 3) {
        cashflow::raisePlatformError(AutomationReason::textTooLong);
    }
    return static_cast<int>(size);
}

} // namespace

std::wstring wide(std::string_view text) {
    const int size = countOf(text.size());
    std::wstring result(text.size(), L'\0'); // never more units than bytes
    if (size > 0) {
        result.resize(
            static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(), size)));
    }
    return result;
}

std::string utf8(std::wstring_view text) {
    const int size = countOf(text.size());
    std::string result(text.size() * 3, '\0');
    if (size > 0) {
        result.resize(static_cast<std::size_t>(
            WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(), size * 3, nullptr, nullptr)));
    }
    return result;
}

std::string utf8OfBstr(const OLECHAR* bstr) {
    return bstr == nullptr ? std::string() : utf8(std::wstring_view(bstr, SysStringLen(const_cast<BSTR>(bstr))));
}

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(countOf(text.size())))) {
    if (text_ == nullptr) {
        throw std::bad_alloc();
    }
}

Bstr::Bstr(Bstr&& other) noexcept : text_(other.detach()) {}

Bstr& Bstr::operator=(Bstr other) noexcept {
    std::swap(text_, other.text_);
    return *this;
}

BSTR* Bstr::put() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
}

BSTR Bstr::detach() noexcept { return std::exchange(text_, nullptr); }

} // namespace z7::adapters::automation
