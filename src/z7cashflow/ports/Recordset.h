#pragma once

#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace z7::cashflow {

class Connection;

/// Where a recordset keeps its rows. The numbers are those that database hosts know.
enum class CursorLocation : int { Server = 2, Client = 3 };
/// How a recordset can be walked.
enum class CursorType : int { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
/// Whether a recordset's rows can be changed, and when a changed row is compared with the stored one.
/// Unspecified leaves the choice to the adapter, which takes read-only.
enum class LockType : int { Unspecified = -1, ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };
/// The state of a connection or a recordset.
enum class ObjectState : int { Closed = 0, Open = 1 };

/// The fields of a recordset: its columns, and their values in the current record.
/// Names are looked up without regard to letter case. Positions count from 0.
class FieldList {
public:
    virtual ~FieldList() = default;

    /// The number of columns.
    [[nodiscard]] virtual int Count() const = 0;
    /// The column's name as the database spells it. Error 3265 if there is no such position.
    [[nodiscard]] virtual const std::string& Name(int position) const = 0;
    /// Whether there is a column of that name.
    [[nodiscard]] virtual bool Has(std::string_view name) const = 0;

    /// The value in the current record; where several columns have one name, the first. Error 3265 if there is no
    /// such column, 3021 if there is no current record, 3704 if the recordset is closed.
    [[nodiscard]] virtual Variant Item(std::string_view name) const = 0;
    [[nodiscard]] virtual Variant Item(int position) const = 0;
    /// Changes the value of the current record's column, which reaches the database with Update. The value is converted
    /// to the column's type; a value that does not convert, or does not fit, is error 13 and leaves the column as
    /// it was. Error 3251 if the recordset is read-only, else as for reading.
    virtual void Item(std::string_view name, const Variant& value) = 0;
};

/// What a recordset works on: an open connection, or the text of a connection string, which means a
/// session of its own that does not see what others have not committed. The connection is not owned and must
/// outlive the recordset's use of it.
using ActiveConnection = std::variant<std::monostate, Connection*, std::string>;

/// The result of a statement, walked record by record. It is made by Connection::Execute or
/// Connection::CreateRecordset, is used on one thread, and is closed by its destructor at the latest.
///
/// Errors of the database pass through with their own number and text; a recordset that is not open answers every
/// operation but Open, State, CursorLocation and ActiveConnection with error 3704.
class Recordset {
public:
    virtual ~Recordset() = default;

    /// Runs the statement and moves to its first record, if there is one. A statement without a result leaves the
    /// recordset closed. Error 3705 if it is open already, 3709 if there is nothing to run it on.
    virtual void Open(const std::string& source, const ActiveConnection& connection, CursorType cursorType,
                      LockType lockType) = 0;
    /// Releases the rows and the session. Closing a closed recordset is error 3704.
    virtual void Close() = 0;
    [[nodiscard]] virtual ObjectState State() const = 0;

    /// The text of the statement that gave the records, exactly as it was handed in.
    [[nodiscard]] virtual std::string Source() const = 0;

    /// True after the last record, and where there is none. (The platform calls it EOF, which is a macro of the C
    /// library.)
    [[nodiscard]] virtual bool EndOfFile() const = 0;
    /// The number of records that the filter lets through.
    [[nodiscard]] virtual std::int32_t RecordCount() const = 0;
    /// To the first record that the filter lets through, or to the end if there is none.
    virtual void MoveFirst() = 0;
    /// To the next record that the filter lets through. Error 3021 at the end.
    virtual void MoveNext() = 0;

    /// The columns and the current record's values. Owned by the recordset.
    [[nodiscard]] virtual FieldList& Fields() = 0;

    /// Shows only the records in which every named column equals its number, and goes to the first of them. The text
    /// is a list of conditions "column=number" joined by " and "; the empty text shows all. Error 3001 for any
    /// other text, a missing number among them; the records shown then stay as they were.
    virtual void Filter(const std::string& criteria) = 0;
    [[nodiscard]] virtual std::string Filter() const = 0;

    /// Where the rows are kept; to be set before Open. Error 3705 if the recordset is open.
    virtual void CursorLocation(cashflow::CursorLocation location) = 0;
    [[nodiscard]] virtual cashflow::CursorLocation CursorLocation() const = 0;

    /// What Open takes when it is given no connection of its own.
    virtual void ActiveConnection(const cashflow::ActiveConnection& connection) = 0;
    [[nodiscard]] virtual cashflow::ActiveConnection ActiveConnection() const = 0;

    /// Begins a new record with null in every column and makes it the current one. Error 3251 if the recordset is
    /// read-only.
    virtual void AddNew() = 0;
    /// Writes the current record's changes to the database. Without changes it does nothing. If the database refuses,
    /// its error comes out and the changes stay pending.
    virtual void Update() = 0;
};

} // namespace z7::cashflow
