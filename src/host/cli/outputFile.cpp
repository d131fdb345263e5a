#include "host/cli/outputFile.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace z7::cashflow::host {

void requireNewFile(const std::filesystem::path& file) {
    std::error_code ignored;
    if (std::filesystem::exists(std::filesystem::symlink_status(file, ignored))) {
        throw Failure(exit_code::usage, HostText::fileExists, {sqlite::utf8Of(file)});
    }
}

void writeNewFile(const std::filesystem::path& file, std::string_view text) {
    requireNewFile(file);
    errno = 0;
    std::ofstream stream(file, std::ios::binary);
    const bool opened = stream.is_open();
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (stream.fail()) {
        const std::string reason = std::generic_category().message(errno);
        std::error_code ignored;
        if (opened) {
            std::filesystem::remove(file, ignored);
        }
        throw Failure(exit_code::database, HostText::moveFailed, {sqlite::utf8Of(file), reason});
    }
}

} // namespace z7::cashflow::host
