#include "adapters/sqlite/fileSystem.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace z7::cashflow::sqlite {

namespace fs = std::filesystem;

namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

/// An open file or folder.
class Descriptor {
public:
    Descriptor(const fs::path& path, int flags) : number_(::open(path.c_str(), flags | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    [[nodiscard]] std::error_code sync() const {
        return number_ < 0 || ::fsync(number_) != 0 ? lastError() : std::error_code();
    }

private:
    int number_;
};

bool isUnsupported(const std::error_code& code) {
    return code == std::errc::operation_not_supported || code == std::errc::operation_not_permitted ||
           code == std::errc::function_not_supported || code == std::errc::invalid_argument ||
           code == std::errc::too_many_links;
}

} // namespace

std::error_code makePrivateFolder(const fs::path& folder) {
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 ? std::error_code() : lastError();
}

bool isOwn(const fs::path& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && status.st_uid == ::geteuid();
}

std::error_code publishFile(const fs::path& from, const fs::path& to) {
    if (::link(from.c_str(), to.c_str()) == 0) {
        return {};
    }
    const std::error_code code = lastError();
#ifdef RENAME_NOREPLACE
    if (isUnsupported(code)) {
        return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ? std::error_code()
                                                                                                : lastError();
    }
#endif
    return code;
}

std::error_code syncFile(const fs::path& file) { return Descriptor(file, O_RDONLY).sync(); }

std::error_code syncFolder(const fs::path& folder) {
    const std::error_code code = Descriptor(folder, O_RDONLY | O_DIRECTORY).sync();
    return isUnsupported(code) || code == std::errc::permission_denied ? std::error_code() : code;
}

} // namespace z7::cashflow::sqlite
