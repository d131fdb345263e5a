// Runs what a document shows of the program: document_cases PROGRAM DOCUMENT
//
// A line "    $ command" of the document begins a case; the indented lines after it, up to the next command or the
// end of the block, are what it writes, the output first and then the error stream. A line "..." stands for lines
// that are left out. All commands run in their order in one folder. Times of the clock are the only thing that may
// differ.

#include "ProgramFolder.h"

#include <exception>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

using z7::cashflow::host::contentOf;
using z7::cashflow::host::ProgramFolder;
using z7::cashflow::host::ShellResult;

constexpr const char* indentation = "    ";
constexpr const char* leftOut = "...";

struct Case {
    std::string command;
    std::vector<std::string> shown;
};

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The cases of a document. An empty line continues a block if the next line is indented.
std::vector<Case> casesOf(const std::string& document) {
    std::vector<Case> cases;
    bool inside = false;
    std::size_t empty = 0;
    for (const std::string& line : linesOf(document)) {
        const bool indented = line.starts_with(indentation);
        const std::string text = indented ? line.substr(std::string(indentation).size()) : std::string();
        if (indented && text.starts_with("$ ")) {
            cases.push_back({text.substr(2), {}});
            inside = true;
        } else if (inside && indented) {
            cases.back().shown.insert(cases.back().shown.end(), empty, "");
            cases.back().shown.push_back(text);
        } else if (inside && line.empty()) {
            ++empty;
            continue;
        } else {
            inside = false;
        }
        empty = 0;
    }
    return cases;
}

std::string withoutTimes(const std::string& text) {
    static const std::regex time("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}");
    return std::regex_replace(text, time, "YYYY-MM-DD hh:mm:ss");
}

/// Whether lines equal the lines shown, letter by letter.
bool isShown(const std::vector<std::string>& shown, const std::vector<std::string>& lines) {
    std::size_t place = 0;
    bool anywhere = false;
    for (const std::string& line : shown) {
        if (line == leftOut) {
            anywhere = true;
            continue;
        }
        while (anywhere && place < lines.size() && lines[place] != line) {
            ++place;
        }
        if (place == lines.size() || lines[place] != line) {
            return false;
        }
        ++place;
        anywhere = false;
    }
    return anywhere || place == lines.size();
}

int runDocument(const std::string& program, const std::string& document) {
    const auto cases = casesOf(withoutTimes(contentOf(document)));
    const ProgramFolder folder(program);
    int failures = 0;
    for (const Case& each : cases) {
        const ShellResult result = folder.run(each.command);
        const std::string written = withoutTimes(result.out + result.err);
        if (!isShown(each.shown, linesOf(written))) {
            ++failures;
            std::cerr << "--- " << document << " shows for: " << each.command << "\n";
            for (const std::string& line : each.shown) {
                std::cerr << line << "\n";
            }
            std::cerr << "+++ it writes\n" << written << "\n";
        }
    }
    std::cout << cases.size() << " commands, " << failures << " failed\n";
    if (cases.empty()) {
        std::cerr << document << ": no command\n";
    }
    return cases.empty() || failures > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: document_cases PROGRAM DOCUMENT\n";
        return 2;
    }
    try {
        return runDocument(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
