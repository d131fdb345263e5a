#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace z7::cashflow::host {

/// A temporary folder that is removed with its contents when the test ends.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "z7cf-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no folder can be made for the test");
        }
        path_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

    /// Writes a file of that name and returns its path.
    std::filesystem::path write(const std::string& name, const std::string& text) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

private:
    std::filesystem::path path_;
};

} // namespace z7::cashflow::host
