#pragma once

#include "adapters/shared/recordset/ClientRecordset.h"
#include "doubles/ScriptedDatabase.h"

#include <string>

namespace z7::cashflow::test {

/// A recordset on the rows of a scripted answer. Movement, filter and writing are those of the recordset shared by
/// the database adapters; this one adds the journal.
class ScriptedRecordset final : public Recordset, private FieldList {
public:
    ScriptedRecordset(ScriptedDatabase& database, Connection* creator, std::string session);
    ~ScriptedRecordset() override;
    ScriptedRecordset(const ScriptedRecordset&) = delete;
    ScriptedRecordset& operator=(const ScriptedRecordset&) = delete;

    /// Opens it with the result of a statement. Only a writable one accepts values.
    void fill(const std::string& source, const Table& table, bool writable);

    void Open(const std::string& source, const cashflow::ActiveConnection& connection, CursorType cursorType,
              LockType lockType) override;
    void Close() override;
    [[nodiscard]] ObjectState State() const override { return records_.State(); }
    [[nodiscard]] std::string Source() const override { return records_.Source(); }
    [[nodiscard]] bool atEnd() const override { return records_.atEnd(); }
    [[nodiscard]] std::int32_t RecordCount() const override { return countsRows_ ? records_.RecordCount() : -1; }
    void MoveFirst() override { records_.MoveFirst(); }
    void MoveNext() override { records_.MoveNext(); }
    [[nodiscard]] FieldList& Fields() override;
    void Filter(const std::string& criteria) override;
    [[nodiscard]] std::string Filter() const override { return records_.Filter(); }
    void CursorLocation(cashflow::CursorLocation location) override;
    [[nodiscard]] cashflow::CursorLocation CursorLocation() const override { return location_; }
    void ActiveConnection(const cashflow::ActiveConnection& connection) override { active_ = connection; }
    [[nodiscard]] cashflow::ActiveConnection ActiveConnection() const override { return active_; }
    void AddNew() override;
    void Update() override;

private:
    [[nodiscard]] int Count() const override { return fields_->Count(); }
    [[nodiscard]] const std::string& Name(int position) const override { return fields_->Name(position); }
    [[nodiscard]] bool has(std::string_view name) const override { return fields_->has(name); }
    [[nodiscard]] Variant Item(std::string_view name) const override { return fields_->Item(name); }
    [[nodiscard]] Variant Item(int position) const override { return fields_->Item(position); }
    void Item(std::string_view name, const Variant& value) override;

    ScriptedDatabase& database_;
    Connection* creator_;
    std::string session_;
    shared::ClientRecordset records_{nullptr};
    FieldList* fields_ = nullptr; ///< the fields of the records, once they are open
    std::string source_;
    cashflow::CursorLocation location_ = cashflow::CursorLocation::server;
    cashflow::ActiveConnection active_;
    bool countsRows_ = true; ///< a dynamic cursor on the server does not know its number of rows
};

} // namespace z7::cashflow::test
