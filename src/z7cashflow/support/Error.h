#pragma once

#include <exception>
#include <string>

namespace z7::cashflow {

/// Numbers of the errors that come from conversions, lists and recordsets.
namespace errors {
inline constexpr int badArgument = 5;          ///< a key that a list does not hold, an argument out of its range
inline constexpr int overflow = 6;             ///< a number outside the range of its target
inline constexpr int badIndex = 9;             ///< an index outside 1 to the number of elements
inline constexpr int typeMismatch = 13;        ///< a value that cannot be read as the wanted type
inline constexpr int objectNotSet = 91;        ///< an object that is needed and missing
inline constexpr int invalidNull = 94;         ///< a null where a value is needed
inline constexpr int keyExists = 457;          ///< a key that a list or a map already holds
inline constexpr int badFilter = 3001;         ///< a filter or an argument that a recordset does not understand
inline constexpr int noCurrentRecord = 3021;   ///< a record is needed and the recordset stands on none
inline constexpr int notUpdatable = 3251;      ///< a change of a recordset that is read-only
inline constexpr int unknownField = 3265;      ///< a field that the recordset does not have
inline constexpr int objectClosed = 3704;      ///< an operation that needs an open recordset or connection
inline constexpr int objectOpen = 3705;        ///< an operation that needs a closed recordset or connection
inline constexpr int noConnection = 3709;      ///< a recordset that has no connection to be opened on
inline constexpr int unknownRowField = 1000;   ///< a field that a cash-flow row does not have
inline constexpr int badSchemaDocument = 1001; ///< the schema document cannot be parsed
inline constexpr int badCollectionXml = 1002;  ///< collection XML cannot be parsed
inline constexpr int badVoucherXml = 1005;     ///< voucher XML cannot be parsed
inline constexpr int rowsDoNotFit = 10008;     ///< a row is incomplete or does not stand on its line
inline constexpr int sumsDiffer = 10009; ///< the rows' sum differs from the voucher's, or there is nothing to check
inline constexpr int noVoucherDateForSave = 10010; ///< no line of the voucher to give its date to a save
inline constexpr int noVoucherDateForXml = 10011;  ///< no line of the voucher to give its date to rows from XML
inline constexpr int statementRefused = 10020;     ///< a value that would change the statement that it goes into
} // namespace errors

/// The one exception of the library: a number that callers can test, where it came from, and a text for people.
/// The source "CashFlow" marks what the library itself decided. An error of a database carries the database's own
/// number and text, and its five-character SQL state if it has one.
class Error : public std::exception {
public:
    Error(int number, std::string source, std::string description, std::string sqlState = {});

    [[nodiscard]] int number() const noexcept { return number_; }
    [[nodiscard]] const std::string& source() const noexcept { return source_; }
    [[nodiscard]] const std::string& description() const noexcept { return description_; }
    /// The database's own error number; for an error that is not a database's, the same as number().
    [[nodiscard]] int nativeError() const noexcept { return number_; }
    /// SQLSTATE of a database error; empty for all others.
    [[nodiscard]] const std::string& sqlState() const noexcept { return sqlState_; }
    /// The description, for handlers that know nothing of this class.
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

    /// The same error under another source.
    [[nodiscard]] Error withSource(std::string source) const;

private:
    int number_;
    std::string source_;
    std::string description_;
    std::string sqlState_;
};

/// Throws an error of the platform's kind (numbers 5 to 3705) with the usual text for its number,
/// followed by ": " and the detail if one is given.
[[noreturn]] void raisePlatformError(int number, const std::string& detail = {});

/// Runs an action and drops any Error that it raises. For the places where the rules of the voucher say that one
/// statement may fail unnoticed; everything else (out of memory, a defect) passes through.
template <class Action> void ignoringErrors(Action&& action) {
    try {
        action();
    } catch (const Error&) { // the rule at the calling place says why
    }
}

} // namespace z7::cashflow
