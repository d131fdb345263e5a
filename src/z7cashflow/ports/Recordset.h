#pragma once

#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

class Connection;

/// Where a recordset keeps its rows. The numbers are those known to database hosts.
enum class CursorLocation : int { server = 2, client = 3 };
/// How one can move in a recordset.
enum class CursorType : int { forwardOnly = 0, keyset = 1, dynamic = 2, snapshot = 3 };
/// Whether a recordset's rows can be changed, and when a changed row is compared with the stored one. Adapters read
/// unspecified as read-only, and may compare in Update only.
enum class LockType : int {
    unspecified = -1, ///< the adapter decides
    readOnly = 1,     ///< no changes: AddNew and Item raise error 3251
    pessimistic = 2,  ///< changes; compared when a record is edited
    optimistic = 3    ///< changes; compared when Update writes the record
};
/// The state of a connection or a recordset.
enum class ObjectState : int { closed = 0, open = 1 };

/// The fields of a recordset: its columns, and their values in the current record.
/// Names are looked up without regard to letter case. Positions count from 0.
class FieldList {
public:
    virtual ~FieldList() = default;

    /// The number of columns.
    [[nodiscard]] virtual int Count() const = 0;
    /// The column's name as spelled by the database. Error 3265 if the position does not exist.
    [[nodiscard]] virtual const std::string& Name(int position) const = 0;
    /// Whether there is a column with that name.
    [[nodiscard]] virtual bool has(std::string_view name) const = 0;

    /// The value in the current record; if several columns have the same name, that of the first. Error 3265 if
    /// the column does not exist, 3021 if there is no current record, 3704 if the recordset is closed.
    [[nodiscard]] virtual Variant Item(std::string_view name) const = 0;
    /// The value of the column at a position. Errors as by name.
    [[nodiscard]] virtual Variant Item(int position) const = 0;
    /// Changes the value of the current record's column; Update writes it to the database. The value is
    /// converted to the column's type; if it cannot be converted or does not fit, error 13 is raised and the
    /// column is unchanged. Error 3251 if the recordset is read-only, otherwise as for reading.
    virtual void Item(std::string_view name, const Variant& value) = 0;
};

/// What a recordset uses: an open connection, or a connection string, which means a separate session that does not
/// see uncommitted changes of others. The connection is not owned and must outlive the recordset's use of it.
using ActiveConnection = std::variant<std::monostate, Connection*, std::string>;

/// The result of a statement, read record by record. It is created by Connection::Execute or
/// Connection::createRecordset, used on one thread, and closed by its destructor at the latest.
///
/// Errors of the database pass through with their own number and text; on a closed recordset every operation except
/// Open, State, CursorLocation and ActiveConnection raises error 3704.
class Recordset {
public:
    virtual ~Recordset() = default;

    /// Runs the statement and moves to its first record, if there is one. A statement without a result leaves
    /// the recordset closed. Error 3705 if it is already open, 3709 if it has no connection.
    virtual void Open(const std::string& source, const ActiveConnection& connection, CursorType cursorType,
                      LockType lockType) = 0;
    /// Releases the rows and the session. Closing a closed recordset is error 3704.
    virtual void Close() = 0;
    /// Open as long as the recordset has a result, even one without records.
    [[nodiscard]] virtual ObjectState State() const = 0;

    /// The text of the statement that returned the records, exactly as it was passed in.
    [[nodiscard]] virtual std::string Source() const = 0;

    /// True after the last record, and if there is none. (The platform calls it EOF, which is a macro of the C
    /// library.)
    [[nodiscard]] virtual bool atEnd() const = 0;
    /// The number of records that match the filter.
    [[nodiscard]] virtual std::int32_t RecordCount() const = 0;
    /// Moves to the first record that matches the filter, or to the end if there is none.
    virtual void MoveFirst() = 0;
    /// Moves to the next record that matches the filter. Error 3021 at the end.
    virtual void MoveNext() = 0;

    /// The columns and the current record's values. Owned by the recordset.
    [[nodiscard]] virtual FieldList& Fields() = 0;

    /// Shows only the records in which every named column equals its number, and moves to the first of them.
    /// The text is a list of conditions "column=number" joined by " and "; the empty text shows all records.
    /// Error 3001 for any other text, including a missing number; the visible records are then unchanged.
    virtual void Filter(const std::string& criteria) = 0;
    /// The filter in effect; empty if there is none.
    [[nodiscard]] virtual std::string Filter() const = 0;

    /// Where the rows are kept; must be set before Open. Error 3705 if the recordset is open.
    virtual void CursorLocation(cashflow::CursorLocation location) = 0;
    /// Where the rows are kept.
    [[nodiscard]] virtual cashflow::CursorLocation CursorLocation() const = 0;

    /// What Open uses if no connection is passed to it.
    virtual void ActiveConnection(const cashflow::ActiveConnection& connection) = 0;
    /// What was set, or passed to Open last.
    [[nodiscard]] virtual cashflow::ActiveConnection ActiveConnection() const = 0;

    /// Begins a new record with null in every column and makes it the current one. Error 3251 if the recordset is
    /// read-only.
    virtual void AddNew() = 0;
    /// Writes the current record's changes to the database. Without changes it does nothing. If the database
    /// refuses, its error passes through and the changes remain pending.
    virtual void Update() = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
