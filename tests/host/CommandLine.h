#pragma once

#include "RunProgram.h"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// The words of a text, separated by blanks.
inline std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

/// z7cf ... > FILE". Words contain no blanks, and every command is z7cf. Returns the result of the last command,
/// with the error output of all of them.
inline RunResult runLine(const std::string& line, const ConnectionMaker& serverConnection = {},
                         const Clock& clock = {}) {
    RunResult result;
    std::string file;
    std::vector<std::string> command;
    const auto run = [&] {
        const std::string errors = result.err;
        const std::vector<std::string> arguments(command.empty() ? command.end() : command.begin() + 1, command.end());
        result = !command.empty() && command.front() == "z7cf"
                     ? runProgram(arguments, serverConnection, clock, result.out)
                     : RunResult{127, "", "not z7cf: " + line};
        result.err.insert(0, errors);
        command.clear();
    };
    bool names = false; // the next word is the output file
    for (const std::string& word : wordsOf(line)) {
        if (word == "|") {
            run();
        } else if (names || word == ">") {
            file = names ? word : file;
            names = !names;
        } else {
            command.push_back(word);
        }
    }
    run();
    if (!file.empty()) {
        std::ofstream(file, std::ios::binary) << result.out;
        result.out.clear();
    }
    return result;
}

} // namespace z7::cashflow::host
