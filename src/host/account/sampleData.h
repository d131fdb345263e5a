#pragma once

#include <span>
#include <string_view>

namespace z7::cashflow::host {

/// One file of the sample company, embedded in the program.
struct SampleFile {
    std::string_view name; ///< the file's name without its extension
    std::string_view text;
};

// The files are in src/host/sample and are embedded when the program is built.

/// The CSV files, named after their tables.
[[nodiscard]] std::span<const SampleFile> sampleFiles() noexcept;
/// Statements that create the tables that are not part of the schema, named after the tables.
[[nodiscard]] std::span<const SampleFile> sampleDefinitions() noexcept;
/// XML documents of vouchers and rows.
[[nodiscard]] std::span<const SampleFile> sampleDocuments() noexcept;

} // namespace z7::cashflow::host
