#pragma once

#include "z7cashflow/support/visibility.h"

Z7_PUBLIC_BEGIN

/// The error numbers that this product raises or tests, by name. Other numbers are those of a database.
namespace z7::cashflow::errors {

// Conversions, lists and objects.
inline constexpr int badArgument = 5;     ///< a key that a list does not hold, an argument out of its range
inline constexpr int overflow = 6;        ///< a number outside the range of its target
inline constexpr int outOfMemory = 7;     ///< a text or a document that does not fit into memory
inline constexpr int badIndex = 9;        ///< an index outside 1 to the number of elements
inline constexpr int typeMismatch = 13;   ///< a value that cannot be read as the wanted type
inline constexpr int inUse = 70;          ///< something that exists only once and is being used
inline constexpr int objectNotSet = 91;   ///< an object that is needed and missing
inline constexpr int invalidNull = 94;    ///< a null where a value is needed
inline constexpr int memberUnknown = 438; ///< a property or an operation that an object does not have
inline constexpr int keyExists = 457;     ///< a key that a list or a map already holds

// Connections and recordsets.
inline constexpr int invalidArgument =
    3001; ///< a filter or another argument that a connection or recordset cannot take
inline constexpr int noCurrentRecord = 3021; ///< a record is needed and the recordset is not positioned on one
inline constexpr int recordChanged = 3197;   ///< the stored record is gone or no longer holds what was read
inline constexpr int notUpdatable = 3251;    ///< a change of a recordset that is read-only
inline constexpr int unknownField = 3265;    ///< a field that the recordset does not have
inline constexpr int objectClosed = 3704;    ///< an operation that needs an open recordset or connection
inline constexpr int objectOpen = 3705;      ///< an operation that needs a closed recordset or connection
inline constexpr int driverNotFound = 3706;  ///< a connection string that names no driver of this machine
inline constexpr int noConnection = 3709;    ///< a recordset that has no connection to be opened on

// Cash-flow rows and vouchers; the source is "CashFlow".
inline constexpr int unknownRowField = 1000;   ///< a field that a cash-flow row does not have
inline constexpr int badSchemaDocument = 1001; ///< the schema document cannot be parsed
inline constexpr int badCollectionXml = 1002;  ///< collection XML cannot be parsed
inline constexpr int badVoucherXml = 1005;     ///< voucher XML cannot be parsed
inline constexpr int rowsDoNotFit = 10008;     ///< a row is incomplete or does not match its entry line
inline constexpr int sumsDiffer = 10009; ///< the rows' sum differs from the voucher's, or there is nothing to check
inline constexpr int noVoucherDateForSave = 10010; ///< no line of the voucher to give its date to a save
inline constexpr int noVoucherDateForXml = 10011;  ///< no line of the voucher to give its date to rows from XML
inline constexpr int statementRefused = 10020;     ///< a value that would change the statement that it goes into

// Vouchers that the workbench refuses.
inline constexpr int dateOutsideYear = 10021; ///< a voucher without a date, or with one outside its accounting year
inline constexpr int rowsNotReadable = 10022; ///< stored rows that no reader finds
inline constexpr int foreignDocument = 10023; ///< a document that holds no rows, or those of another voucher
inline constexpr int changedSince = 10024;    ///< rows that have changed since a run, which therefore cannot be undone
inline constexpr int cannotAssign = 10025;    ///< a line that is not there, or an amount that it cannot take
inline constexpr int noLedgerVoucher = 10026; ///< an outside voucher that the ledger does not have

// What a server of the suite answers, and the embedded database in its place.
inline constexpr int unspecified = -2147467259;      ///< an error of a driver that reports no number
inline constexpr int serverNotReached = 17;          ///< no server, or the connection to it is lost
inline constexpr int badSyntax = 102;                ///< incorrect syntax near a token
inline constexpr int unclosedQuote = 105;            ///< a text or a name that is not closed
inline constexpr int fewerValues = 109;              ///< an insert names more columns than it has values
inline constexpr int moreValues = 110;               ///< an insert has more values than it names columns
inline constexpr int unclosedComment = 113;          ///< a comment that is not closed
inline constexpr int argumentCount = 174;            ///< a function with too many or too few arguments
inline constexpr int tooDeep = 191;                  ///< nested too deeply
inline constexpr int unknownFunction = 195;          ///< a function that is not known
inline constexpr int unknownObject = 208;            ///< a table or a view that is not there
inline constexpr int badDate = 241;                  ///< a text that is not a date
inline constexpr int unknownType = 243;              ///< a data type that is not known
inline constexpr int unknownDatabase = 911;          ///< a database that is not there
inline constexpr int unnamedColumn = 1038;           ///< a column of a new table without a name
inline constexpr int lockTimeout = 1222;             ///< another session holds what is needed
inline constexpr int noTransactionToCommit = 3902;   ///< a commit without a transaction
inline constexpr int noTransactionToRollBack = 3903; ///< a rollback without a transaction
inline constexpr int transactionLost = 3930;         ///< the server has ended the transaction; only a rollback is left
inline constexpr int transactionExists = 3988;       ///< a transaction is open already
inline constexpr int conversionFailed = 8114;        ///< a text that is not a number, or not a value of its column
inline constexpr int numberTooLarge = 8115;          ///< a number out of the range of its column
inline constexpr int textTooLong = 8152;             ///< a text with more characters than its column takes
inline constexpr int loginFailed = 18456;            ///< the server refuses the user or the password
inline constexpr int ambiguousTable = 8154;          ///< a table name that stands for two tables of a statement

} // namespace z7::cashflow::errors

Z7_PUBLIC_END
