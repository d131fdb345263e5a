#pragma once

#include <span>
#include <string_view>

namespace z7::cashflow::host {

/// One file of the sample company, as it is in the program.
struct SampleFile {
    std::string_view name; ///< the file's name without its ending
    std::string_view text;
};

// Their texts lie in src/host/sample and are put into the program when it is built.

/// The CSV files, which are named after their tables.
[[nodiscard]] std::span<const SampleFile> sampleFiles() noexcept;
/// Statements that make the tables that no account has of its own, named after the tables.
[[nodiscard]] std::span<const SampleFile> sampleDefinitions() noexcept;
/// XML documents: vouchers and rows.
[[nodiscard]] std::span<const SampleFile> sampleDocuments() noexcept;

} // namespace z7::cashflow::host
