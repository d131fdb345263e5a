#include "host/cli/application.h"
#include "host/windows/ConsoleInputBuffer.h"
#include "host/windows/ConsoleOutputBuffer.h"
#include "host/windows/wideText.h"

#include <windows.h>

#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <iostream>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

namespace host = z7::cashflow::host;

/// The words of the command line in UTF-8, without the program's name.
std::vector<std::string> argumentsOfCommandLine() {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(host::utf8Text(words[i]));
    }
    LocalFree(words);
    return arguments;
}

/// The console on one of the standard handles; null if there is none, but a file, a pipe or nothing.
HANDLE consoleOf(DWORD which) {
    const HANDLE handle = GetStdHandle(which);
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0 ? handle : nullptr;
}

/// The width of a console's window; 0 for null.
std::size_t columnsOf(HANDLE console) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return console != nullptr && GetConsoleScreenBufferInfo(console, &info) != 0
               ? static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1)
               : 0;
}

/// Lets a console interpret escape sequences while it lives. Consoles before Windows 10 cannot.
class EscapeSequences {
public:
    explicit EscapeSequences(HANDLE console) : console_(console) {
        understood_ = console_ != nullptr && GetConsoleMode(console_, &former_) != 0 &&
                      SetConsoleMode(console_, former_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    }
    EscapeSequences(const EscapeSequences&) = delete;
    EscapeSequences& operator=(const EscapeSequences&) = delete;
    ~EscapeSequences() {
        if (understood_) {
            SetConsoleMode(console_, former_);
        }
    }
    [[nodiscard]] bool understood() const noexcept { return understood_; }

private:
    HANDLE console_;
    DWORD former_ = 0;
    bool understood_ = false;
};

/// A stream over a console, or where there is none the program's own.
template <class Buffer, class Stream> class StandardStream {
public:
    StandardStream(HANDLE console, Stream& own) : own_(own) {
        if (console != nullptr) {
            stream_.emplace(&buffer_.emplace(console));
        }
    }
    [[nodiscard]] Stream& stream() noexcept { return stream_ ? *stream_ : own_; }

private:
    Stream& own_;
    std::optional<Buffer> buffer_;
    std::optional<Stream> stream_;
};

} // namespace

int main() {
    for (const int descriptor : {0, 1, 2}) { // no line break becomes two bytes, and no byte ends a file
        _setmode(descriptor, _O_BINARY);
    }
    const HANDLE input = consoleOf(STD_INPUT_HANDLE);
    const HANDLE output = consoleOf(STD_OUTPUT_HANDLE);
    const HANDLE errors = consoleOf(STD_ERROR_HANDLE);
    const EscapeSequences escapeSequences(errors);
    StandardStream<host::ConsoleInputBuffer, std::istream> in(input, std::cin);
    StandardStream<host::ConsoleOutputBuffer, std::ostream> out(output, std::cout);
    StandardStream<host::ConsoleOutputBuffer, std::ostream> err(errors, std::cerr);
    const host::Console console{in.stream(),
                                out.stream(),
                                err.stream(),
                                errors != nullptr && input != nullptr,
                                escapeSequences.understood(),
                                columnsOf(output),
                                columnsOf(errors)};
    return host::runApplication(argumentsOfCommandLine(), console);
}
