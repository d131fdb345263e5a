#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

/// \file
/// The ODBC calls that take or return texts, in one variant for the whole program, because drivers break when
/// narrow and wide calls are mixed: on Windows the wide variant, because the narrow one would use the system's code
/// page; elsewhere the narrow variant, whose UTF-8 texts pass through driver managers and drivers unchanged.
namespace z7::cashflow::odbc {

/// A handle of the driver manager, as declared by ODBC.
using Handle = void*;
/// The return value of an ODBC call.
using Return = short;

/// A column of a result as described by the driver.
struct DriverColumn {
    std::string name;     ///< empty for an expression without a name
    short sqlType = 0;    ///< as defined by ODBC, such as SQL_INTEGER
    std::size_t size = 0; ///< characters of a text, digits of a number; 0 if unknown
    short digits = 0;     ///< after the decimal point
    std::string typeName; ///< as named by the database, without its length
    std::string table; ///< the table that the column comes from; empty for an expression, or if the driver does not say
    bool identity = false; ///< an identity column

    /// Equal if all members are equal.
    friend bool operator==(const DriverColumn&, const DriverColumn&) = default;
};

/// One diagnostic record of a call.
struct DiagnosticRecord {
    std::string state; ///< SQLSTATE, five characters
    int native = 0;    ///< the number of the database or the driver; 0 if it has none
    std::string text;  ///< the message
};

/// Each returns the return value of its ODBC call. describeColumn fills in name, type, size and digits.
[[nodiscard]] Return driverConnect(Handle connection, const std::string& text);
/// SQLExecDirect.
[[nodiscard]] Return executeDirect(Handle statement, const std::string& text);
/// SQLDescribeCol for a column, counted from 1.
[[nodiscard]] Return describeColumn(Handle statement, int position, DriverColumn& column);
/// Adds what needs more calls: the names of the type and the table, and whether the column is an identity.
void describeOrigin(Handle statement, int position, DriverColumn& column);
/// False if there is no record with that number, counted from 1.
[[nodiscard]] bool diagnosticRecord(short handleType, Handle handle, int number, DiagnosticRecord& record);
/// The columns of a table's primary key in the order of the key, from SQLPrimaryKeys.
[[nodiscard]] Return primaryKeys(Handle statement, const std::string& database, const std::string& table);

/// A text as bound to a parameter.
class ParameterText {
public:
    /// Converts a text to the form of the driver.
    explicit ParameterText(std::string_view utf8);

    /// The converted text, valid as long as this object.
    [[nodiscard]] void* data() noexcept { return bytes_.data(); }
    /// Its size in bytes, without a final zero.
    [[nodiscard]] std::size_t byteCount() const noexcept { return bytes_.size(); }
    /// In the units of the driver.
    [[nodiscard]] std::size_t length() const noexcept { return length_; }
    /// The C type with which it is bound.
    [[nodiscard]] static short cType() noexcept;

private:
    std::string bytes_;
    std::size_t length_;
};

/// Reads texts of a result, long ones in pieces.
class TextReader {
public:
    TextReader() = default;
    TextReader(const TextReader&) = delete;
    TextReader& operator=(const TextReader&) = delete;

    /// What was read: a text, null, or nothing because the driver failed.
    enum class Outcome { value, null, failed };
    /// Reads a column of the current row, counted from 1. The text is valid until the next call.
    [[nodiscard]] Outcome read(Handle statement, int column);
    /// The text that was read last.
    [[nodiscard]] std::string_view text() const noexcept { return text_; }

private:
    std::string buffer_ = std::string(4096, '\0');
    std::string pieces_;
    std::string_view text_; ///< into one of the two
};

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
