// Runs a file of golden cases: golden_cases PROGRAM FILE
//
// A line "$ command" begins a case; the command goes to the shell in a new folder that the whole file shares, under
// LC_ALL=C and TZ=UTC, with the program found as z7cf. The lines after it are what it writes: those that begin with "!
// " to the error stream, all others to the output; an output line that itself begins with "$", "!", "#" or "[exit" has
// a "\" in front. The case ends with "[exit N]". Lines that begin with "#" are remarks.
//
// With Z7_GOLDEN_SEPARATOR=\ in the environment every "\" that a command writes is compared as "/": for files whose
// cases show names of files, where the system's separator is the other one.
//
// With Z7_RENEW_GOLDEN=1 in the environment the file is written anew with what the commands really do; read the
// difference before you keep it.

#include "ProgramFolder.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

using z7::cashflow::host::contentOf;
using z7::cashflow::host::ProgramFolder;
using z7::cashflow::host::ShellResult;

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

/// What a command has written, with the separator of names of files that the cases have.
std::string withSlashes(std::string text) {
    const char* separator = std::getenv("Z7_GOLDEN_SEPARATOR");
    if (separator != nullptr) {
        std::replace(text.begin(), text.end(), separator[0], '/');
    }
    return text;
}

/// Runs one command and returns its case as it should read.
std::string run(const std::string& command, const ProgramFolder& folder) {
    const ShellResult result = folder.run(command);
    std::string text = "$ " + command + "\n";
    append(text, withSlashes(result.out), "");
    append(text, withSlashes(result.err), "! ");
    return text + "[exit " + std::to_string(result.exitCode) + "]\n";
}

int runFile(const std::string& program, const std::string& file) {
    const ProgramFolder folder(program);
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
            actual = run(line.substr(2), folder);
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
