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

/// A file that is not CSV: what is wrong, and the line (from 1) where it is.
class CsvError : public Error {
public:
    CsvError(CsvReason reason, std::size_t line) : Error("z7cf", {reason}), line_(line) {}
    [[nodiscard]] std::size_t line() const noexcept { return line_; }

private:
    std::size_t line_;
};

/// One record of a CSV file.
struct CsvRecord {
    std::size_t line = 0;                           ///< the line where the record begins, from 1
    std::vector<std::optional<std::string>> fields; ///< nothing for an empty field, the empty text for ""
};

/// Reads CSV: UTF-8 with or without a byte-order mark, fields between commas, quoted by " where they hold commas,
/// quotes (doubled) or line breaks; lines end in LF or CRLF; lines of blanks alone are passed over; every other blank
/// belongs to its field. Calls the taker for each record in turn; an exception from it ends the reading and goes to the
/// caller. Throws CsvError for anything that is not such a file.
void readCsv(std::istream& input, const std::function<void(const CsvRecord&)>& take);

} // namespace z7::cashflow::host
