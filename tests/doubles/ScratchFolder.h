#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

namespace z7::cashflow::test {

/// A temporary folder that is removed with its contents when its owner ends.
class ScratchFolder {
public:
    ScratchFolder() {
        const std::filesystem::path parent = std::filesystem::temp_directory_path();
        std::random_device random;
        do {
            path_ = parent / ("z7cf-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

    /// Writes a file of that name, in a folder of its own if the name has one, and returns its path.
    std::filesystem::path write(const std::string& name, const std::string& text) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }
    /// Removes everything in the folder.
    void clear() const {
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            std::filesystem::remove_all(entry.path());
        }
    }

private:
    std::filesystem::path path_;
};

} // namespace z7::cashflow::test
