// Runs a file of golden cases: golden_cases PROGRAM FILE
//
// A line "$ command" begins a case; the command goes to the shell in a new folder that the whole file shares, under
// LC_ALL=C and TZ=UTC, with the program found as z7cf. The lines behind it are what it writes: those that begin with "!
// " to the error stream, all others to the output; an output line that itself begins with "$", "!", "#" or "[exit" has
// a "\" in front. The case ends with "[exit N]". Lines that begin with "#" are remarks.
//
// With Z7_RENEW_GOLDEN=1 in the environment the file is written anew with what the commands really do; read the
// difference before you keep it.

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// A folder that is gone when the run ends.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (fs::temp_directory_path() / "z7cf-golden-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no folder can be made in " + fs::temp_directory_path().string());
        }
        path_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    [[nodiscard]] const fs::path& path() const noexcept { return path_; }

private:
    fs::path path_;
};

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

void append(std::string& to, const std::string& text, const std::string& prefix) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool special =
            prefix.empty() && !line.empty() &&
            (line[0] == '$' || line[0] == '!' || line[0] == '#' || line[0] == '\\' || line.rfind("[exit", 0) == 0);
        to += prefix + (special ? "\\" : "") + line + "\n";
    }
    if (!text.empty() && text.back() != '\n') {
        to += prefix + "\\(no line break at the end)\n";
    }
}

/// Runs one command and gives back how its case should read.
std::string run(const std::string& command, const fs::path& scratch) {
    const fs::path work = scratch / "work";
    const fs::path script = scratch / "command.sh";
    std::ofstream(script) << command << "\n";
    const std::string line = "cd " + quoted(work.string()) + " && env -i PATH=" + quoted((scratch / "bin").string()) +
                             ":/usr/bin:/bin LC_ALL=C TZ=UTC HOME=" + quoted((scratch / "home").string()) + " sh " +
                             quoted(script.string()) + " >" + quoted((scratch / "out").string()) + " 2>" +
                             quoted((scratch / "err").string()) + " </dev/null";
    const int status = std::system(line.c_str());
    std::string text = "$ " + command + "\n";
    append(text, contentOf(scratch / "out"), "");
    append(text, contentOf(scratch / "err"), "! ");
    return text + "[exit " + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) + "]\n";
}

int runFile(const fs::path& program, const fs::path& file) {
    const ScratchFolder scratch;
    for (const char* name : {"work", "home", "bin"}) {
        fs::create_directory(scratch.path() / name);
    }
    fs::create_symlink(fs::absolute(program), scratch.path() / "bin" / "z7cf");
    std::istringstream lines(contentOf(file));
    std::string renewed;
    std::string expected;
    std::string actual;
    int failures = 0;
    int cases = 0;
    for (std::string line; std::getline(lines, line);) {
        if (expected.empty() && line.rfind("$ ", 0) != 0) {
            if (!line.empty() && line[0] != '#') {
                std::cerr << file << ": a line outside every case: " << line << "\n";
                return 1;
            }
            renewed += line + "\n";
            continue;
        }
        if (expected.empty()) {
            actual = run(line.substr(2), scratch.path());
            ++cases;
        }
        expected += line + "\n";
        if (line.rfind("[exit ", 0) == 0) {
            renewed += actual;
            if (expected != actual) {
                ++failures;
                std::cerr << "--- expected\n" << expected << "+++ actual\n" << actual << "\n";
            }
            expected.clear();
        }
    }
    if (!expected.empty() || cases == 0) {
        std::cerr << file << ": " << (cases == 0 ? "no case" : "a case without [exit N]") << "\n";
        return 1;
    }
    const char* renew = std::getenv("Z7_RENEW_GOLDEN");
    if (renew != nullptr && std::string(renew) == "1") {
        std::ofstream(file, std::ios::binary) << renewed;
        std::cout << file << " was written anew\n";
        return 0;
    }
    std::cout << cases << " cases, " << failures << " failed\n";
    return failures == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: golden_cases PROGRAM FILE\n";
        return 2;
    }
    try {
        return runFile(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
