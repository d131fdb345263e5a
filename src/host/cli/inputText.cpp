#include "host/cli/inputText.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/cli/readText.h"

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestText = std::size_t{64} << 20U;

} // namespace

std::string inputText(const std::string& file, const Console& console) {
    const bool standardInput = file == "-";
    TextRead read = standardInput ? readText(console.in, longestText) : readText(sqlite::pathOf(file), longestText);
    switch (read.outcome) {
    case TextRead::Outcome::unreadable:
        throw standardInput ? Failure(exit_code::usage, HostText::standardInputUnreadable)
                            : Failure(exit_code::usage, HostText::inputUnreadable, {file});
    case TextRead::Outcome::tooLong:
        throw standardInput ? Failure(exit_code::usage, HostText::standardInputTooLong)
                            : Failure(exit_code::usage, HostText::inputTooLong, {file});
    case TextRead::Outcome::whole:
        break;
    }
    if (read.text.find_first_not_of(" \t\r\n") == std::string::npos) {
        throw standardInput ? Failure(exit_code::usage, HostText::standardInputEmpty)
                            : Failure(exit_code::usage, HostText::inputEmpty, {file});
    }
    return std::move(read.text);
}

} // namespace z7::cashflow::host
