#pragma once

#include "adapters/ado/automation/system.h"

#include <string>
#include <string_view>

namespace z7::adapters::automation {

/// Text in UTF-16 from text in UTF-8. Invalid bytes become U+FFFD; zero characters are kept. Error 7 for a text of 2
/// gigabytes or more.
[[nodiscard]] std::wstring wide(std::string_view text);
/// Text in UTF-8 from text in UTF-16. An unpaired surrogate becomes U+FFFD; zero characters are kept. Error 7 as above.
[[nodiscard]] std::string utf8(std::wstring_view text);
/// The text of a BSTR, with the zero characters in it; a null pointer is the empty text, as everywhere in OLE
/// Automation. The BSTR remains the caller's. It must be a BSTR, which has its length in front of its characters.
[[nodiscard]] std::string utf8OfBstr(const OLECHAR* bstr);

/// Owns a BSTR, the text of OLE Automation, or nothing.
class Bstr {
public:
    /// Nothing, which is the empty text.
    Bstr() noexcept = default;
    /// From text in UTF-8; see wide().
    explicit Bstr(std::string_view text) : Bstr(std::wstring_view(wide(text))) {}
    /// From text in UTF-16.
    explicit Bstr(std::wstring_view text);
    Bstr(const Bstr&) = delete;
    /// Takes the text over.
    Bstr(Bstr&& other) noexcept;
    /// Frees the old text and takes the other over.
    Bstr& operator=(Bstr other) noexcept;
    /// Frees the text.
    ~Bstr() { SysFreeString(text_); }

    /// The BSTR, owned by this object; null for nothing.
    [[nodiscard]] BSTR get() const noexcept { return text_; }
    /// The address for an out argument. Frees what was held.
    [[nodiscard]] BSTR* put() noexcept;
    /// Passes the BSTR to the caller, who frees it.
    [[nodiscard]] BSTR detach() noexcept;
    /// The text in UTF-8.
    [[nodiscard]] std::string utf8() const { return utf8OfBstr(text_); }

private:
    BSTR text_ = nullptr;
};

} // namespace z7::adapters::automation
