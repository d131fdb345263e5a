#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A file that is not CSV: what is wrong, and the line (from 1) where it is.
class CsvError : public std::runtime_error {
public:
    enum class Kind {
        utf16,         ///< the file is text in UTF-16
        gb18030,       ///< the line is not UTF-8, but could be GB18030
        spreadsheet,   ///< the file is a document of a spreadsheet program
        invalidUtf8,   ///< a byte that is not UTF-8
        zeroByte,      ///< a NUL byte
        strayQuote,    ///< a quote inside an unquoted field, or text after a closing quote
        unclosedQuote, ///< the file ends inside a quoted field
        recordTooLong, ///< one record of more than 16 MiB
        unreadable,    ///< the stream fails while it is read
        outOfMemory    ///< the record does not fit into memory
    };
    CsvError(Kind kind, std::size_t line);
    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    [[nodiscard]] std::size_t line() const noexcept { return line_; }

private:
    Kind kind_;
    std::size_t line_;
};

/// One record of a CSV file.
struct CsvRecord {
    std::size_t line = 0;                           ///< the line where the record begins, from 1
    std::vector<std::optional<std::string>> fields; ///< nothing for an empty field, the empty text for ""
};

/// Reads CSV: UTF-8 with or without a byte-order mark, fields between commas, quoted by " where they hold commas, quotes
/// (doubled) or line breaks; lines end in LF or CRLF; lines of blanks alone are passed over; every other blank belongs to its
/// field. Calls the taker for each record in turn; an exception from it ends the reading and goes to the caller.
/// Throws CsvError for anything that is not such a file.
void readCsv(std::istream& input, const std::function<void(const CsvRecord&)>& take);

} // namespace z7::cashflow::host
