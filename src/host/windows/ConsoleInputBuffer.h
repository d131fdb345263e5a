#pragma once

#include <streambuf>
#include <string>

namespace z7::cashflow::host {

/// Reads lines from a console of Windows as UTF-8. Ctrl+Z at the start of a line ends the input.
class ConsoleInputBuffer final : public std::streambuf {
public:
    /// The handle is that of a console's input and is not owned.
    explicit ConsoleInputBuffer(void* handle) : handle_(handle) {}

protected:
    int_type underflow() override;

private:
    void* handle_;
    std::wstring begun_; ///< the first half of a character that the last reading has cut
    std::string read_;
};

} // namespace z7::cashflow::host
