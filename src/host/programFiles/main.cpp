// Writes the files of programFiles.h into a folder, for the install: z7cf_files FOLDER

#include "host/cli/programFiles.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

int main(int count, char** words) try {
    const std::vector<std::string> arguments(words, words + count);
    if (arguments.size() != 2) {
        std::cerr << "usage: " << arguments.front() << " FOLDER\n";
        return 2;
    }
    for (const auto& [name, content] : z7::cashflow::host::programFiles()) {
        const auto path = std::filesystem::path(arguments[1]) / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        if (!(file << content << std::flush)) {
            std::cerr << "cannot write " << path.string() << '\n';
            return 1;
        }
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
