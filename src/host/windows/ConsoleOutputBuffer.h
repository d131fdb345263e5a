#pragma once

#include <cstddef>
#include <streambuf>
#include <string>

namespace z7::cashflow::host {

/// Writes UTF-8 to a console of Windows, whose byte streams lose characters outside the system's code page. A
/// character whose bytes arrive in parts is shown as a whole.
class ConsoleOutputBuffer final : public std::streambuf {
public:
    /// The handle is that of a console's output and is not owned.
    explicit ConsoleOutputBuffer(void* handle) : handle_(handle) {}
    ConsoleOutputBuffer(const ConsoleOutputBuffer&) = delete;
    ConsoleOutputBuffer& operator=(const ConsoleOutputBuffer&) = delete;
    ~ConsoleOutputBuffer() override;

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    bool write(std::size_t keptBytes);

    void* handle_;
    std::string pending_;
};

} // namespace z7::cashflow::host
