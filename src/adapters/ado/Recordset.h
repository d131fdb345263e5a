#pragma once

#include "adapters/ado/automation/Dispatch.h"
#include "z7cashflow/ports/Recordset.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace z7::cashflow::ado {

class Connection;

/// A recordset over an ADO recordset. Its cursor is the one that ADO provides for the requested location, type and
/// lock: a dynamic cursor on the server does not know its number of records (RecordCount is -1), and what else depends
/// on the cursor does so here.
///
/// Leaving a record with pending changes writes them first; closing discards them. ADO closes the recordsets of a
/// connection with the connection, unless they were cut off from it.
class Recordset final : public cashflow::Recordset, private FieldList {
public:
    /// A new one of our own, an object of the class ADODB.Recordset. If the system cannot create it, its error.
    Recordset();
    /// The result of a statement that has run on a connection. Without records it is closed.
    Recordset(adapters::automation::Dispatch result, Connection& connection, std::string source);
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    ~Recordset() override;

    void Open(const std::string& source, const cashflow::ActiveConnection& connection, CursorType cursorType,
              LockType lockType) override;
    void Close() override;
    [[nodiscard]] ObjectState State() const override;
    [[nodiscard]] std::string Source() const override;
    [[nodiscard]] bool atEnd() const override;
    [[nodiscard]] std::int32_t RecordCount() const override;
    void MoveFirst() override;
    void MoveNext() override;
    [[nodiscard]] FieldList& Fields() override;
    void Filter(const std::string& criteria) override;
    [[nodiscard]] std::string Filter() const override;
    void CursorLocation(cashflow::CursorLocation location) override;
    [[nodiscard]] cashflow::CursorLocation CursorLocation() const override;
    void ActiveConnection(const cashflow::ActiveConnection& connection) override;
    [[nodiscard]] cashflow::ActiveConnection ActiveConnection() const override;
    void AddNew() override;
    void Update() override;

    /// The ADO recordset, for objects of the host that need it.
    [[nodiscard]] const adapters::automation::Dispatch& object() const noexcept { return object_; }

private:
    [[nodiscard]] int Count() const override;
    [[nodiscard]] const std::string& Name(int position) const override;
    [[nodiscard]] bool has(std::string_view name) const override;
    [[nodiscard]] Variant Item(std::string_view name) const override;
    [[nodiscard]] Variant Item(int position) const override;
    void Item(std::string_view name, const Variant& value) override;

    /// ADO's objects of the columns: each returns the value of the current record, whichever it is.
    struct Columns {
        std::vector<adapters::automation::Dispatch> fields;
        std::vector<std::string> names;
        std::unordered_map<std::string, std::size_t> positions; ///< by name in lower case; the first of equal names
    };

    void requireOpen() const;
    void closeOpen();
    void requireWritable() const;
    const Columns& columns() const;
    [[nodiscard]] const adapters::automation::Dispatch& field(std::string_view name) const;
    [[nodiscard]] adapters::automation::Dispatch session() const;
    void remember(const cashflow::ActiveConnection& connection);
    template <class Action> decltype(auto) onDatabase(Action&& action) const;

    adapters::automation::Dispatch object_;
    std::string source_;
    cashflow::ActiveConnection connection_;
    adapters::automation::Dispatch connectionObject_; ///< of connection_, if that is a connection
    std::vector<std::string> secrets_;                ///< of connection_, if that is a text
    mutable std::unique_ptr<Columns> columns_;        ///< read when they are needed first; null while it is closed
    bool isPending_ = false;                          ///< the current record has changes that are not written
    bool isCutOff_ = false;                           ///< it was cut off from its session while it was open
};

} // namespace z7::cashflow::ado
