#pragma once

#include <wx/string.h>

#include <string>

namespace z7::cashflow::wx {

/// Texts of the library are UTF-8. Bytes that are not valid UTF-8 are shown individually, so that no text
/// disappears.
[[nodiscard]] inline wxString shown(const std::string& text) {
    const wxString read = wxString::FromUTF8(text.data(), text.size());
    return read.empty() && !text.empty() ? wxString::From8BitData(text.data(), text.size()) : read;
}

[[nodiscard]] inline std::string utf8(const wxString& text) { return text.utf8_string(); }

} // namespace z7::cashflow::wx
