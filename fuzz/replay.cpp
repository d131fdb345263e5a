// Passes files to a fuzz target without the fuzzer: replay_NAME FILE-OR-FOLDER... Exits with 0 if none of them is a
// finding, with 1 if there is nothing to replay; a finding ends the process at once.

#include "fuzz/target.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& path) {
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(path)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::cerr << path.string() << " cannot be read\n";
        return false;
    }
    std::cout << path.filename().string() << std::endl; // written first, because a finding ends the process
    const std::string input((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    // A copy of exactly this size, so that a sanitizer detects reads beyond the end.
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& file : filesOf(argv[i])) {
            if (!replay(file)) {
                return 1;
            }
            ++replayed;
        }
    }
    std::cout << replayed << " inputs without a finding\n";
    return replayed == 0 ? 1 : 0;
}
