#pragma once

#include "host/cli/application.h"

#include <sstream>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// What a run of the program gave.
struct RunResult {
    int exitCode = -1;
    std::string out;
    std::string err;

    /// The lines of the output.
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> result;
        std::istringstream stream(out);
        for (std::string line; std::getline(stream, line);) {
            result.push_back(line);
        }
        return result;
    }
};

/// Runs the program inside the test, away from any terminal. serverConnection stands in for the ODBC adapter's
/// connections, clock for the machine's; input is what stands on standard input.
inline RunResult runProgram(const std::vector<std::string>& arguments, const ConnectionMaker& serverConnection = {},
                            const Clock& clock = {}, const std::string& input = {}) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    RunResult result;
    result.exitCode = runApplication(arguments, Console{in, out, err}, serverConnection, clock);
    result.out = out.str();
    result.err = err.str();
    return result;
}

} // namespace z7::cashflow::host
