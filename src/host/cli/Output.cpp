#include "host/cli/Output.h"

#include "adapters/terminal/printable.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"

#include <cerrno>
#include <ostream>
#include <system_error>

namespace z7::cashflow::host {

void Output::line(std::string_view text) {
    errno = 0;
    console_.out << text << '\n';
    requireGood();
}

void Output::raw(std::string_view text) {
    errno = 0;
    console_.out.write(text.data(), static_cast<std::streamsize>(text.size()));
    requireGood();
}

void Output::table(const TextTable& table) {
    for (const std::string& text : table.lines(console_.columns)) {
        line(text);
    }
}

void Output::flush() {
    errno = 0;
    console_.out.flush();
    requireGood();
}

void Output::remark(const std::string& text) {
    if (!options_.quiet) {
        console_.err << terminal::printable(text) << std::endl;
    }
}

void Output::requireGood() {
    if (console_.out) {
        return;
    }
    const int reason = errno;
    if (reason == EPIPE) {
        throw ReaderGone();
    }
    throw Failure(exit_code::database, HostText::outputFailed,
                  {reason == 0 ? std::string("?") : std::generic_category().message(reason)});
}

} // namespace z7::cashflow::host
