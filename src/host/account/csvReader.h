#pragma once

#include "host/account/CsvReason.h"
#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A file that is not valid CSV: the reason, and the line (from 1).
class CsvError : public Error {
public:
    CsvError(CsvReason reason, std::size_t line) : Error("z7cf", {reason}), line_(line) {}
    [[nodiscard]] std::size_t line() const noexcept { return line_; }

private:
    std::size_t line_;
};

/// One record of a CSV file.
struct CsvRecord {
    std::size_t line = 0;                           ///< the line on which the record begins, from 1
    std::vector<std::optional<std::string>> fields; ///< no value for an empty field, the empty text for ""
};

/// Reads CSV: UTF-8 with or without a byte-order mark; fields separated by commas, and enclosed in quotes (") if
/// they contain commas, quotes (doubled) or line breaks; lines end in LF or CRLF. Blank lines are skipped; other
/// blanks belong to their field. Calls take for each record in turn; an exception from it ends the reading and
/// passes to the caller. Throws CsvError for any other file.
void readCsv(std::istream& input, const std::function<void(const CsvRecord&)>& take);

} // namespace z7::cashflow::host
