#pragma once

#include <span>
#include <string_view>

namespace z7::cashflow::host {

/// One CSV file of the sample company, as it is in the program.
struct SampleFile {
    std::string_view table; ///< the file's name without ".csv"
    std::string_view text;
};

/// The sample company's files. Their text lies in src/host/sample and is put into the program when it is built.
[[nodiscard]] std::span<const SampleFile> sampleFiles() noexcept;

} // namespace z7::cashflow::host
