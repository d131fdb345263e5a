#pragma once

#include "doubles/ScratchFolder.h"

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace z7::cashflow::host {

/// What a command of the shell wrote, and how it ended.
struct ShellResult {
    std::string out;
    std::string err;
    int exitCode = -1; ///< -1 if a signal ended it
};

/// The text of a file; empty if it cannot be read.
inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// A new folder in which commands of the shell run one after the other, under LC_ALL=C and TZ=UTC, with a program found
/// as z7cf. It is gone at the end.
class ProgramFolder {
public:
    explicit ProgramFolder(const std::filesystem::path& program) {
        for (const char* name : {"work", "home", "bin"}) {
            std::filesystem::create_directory(scratch_.path() / name);
        }
        std::filesystem::create_symlink(std::filesystem::absolute(program), scratch_.path() / "bin" / "z7cf");
    }

    [[nodiscard]] ShellResult run(const std::string& command) const {
        const std::filesystem::path& base = scratch_.path();
        const std::filesystem::path script = scratch_.write("command.sh", command + "\n");
        const std::string line = "cd " + quoted(base / "work") + " && env -i PATH=" + quoted(base / "bin") +
                                 ":/usr/bin:/bin LC_ALL=C TZ=UTC HOME=" + quoted(base / "home") + " sh " +
                                 quoted(script) + " >" + quoted(base / "out") + " 2>" + quoted(base / "err") +
                                 " </dev/null";
        const int status = std::system(line.c_str());
        return {contentOf(base / "out"), contentOf(base / "err"), WIFEXITED(status) ? WEXITSTATUS(status) : -1};
    }

private:
    static std::string quoted(const std::string& text) {
        std::string result = "'";
        for (const char c : text) {
            result += c == '\'' ? std::string("'\\''") : std::string(1, c);
        }
        return result + "'";
    }

    test::ScratchFolder scratch_;
};

} // namespace z7::cashflow::host
