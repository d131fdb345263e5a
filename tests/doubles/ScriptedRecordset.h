#pragma once

#include "doubles/ScriptedDatabase.h"

#include <cstddef>
#include <string>
#include <vector>

namespace z7::cashflow::test {

/// A recordset over the rows of a scripted answer, with the port's rules for movement, filter and writing.
class ScriptedRecordset final : public Recordset, private FieldList {
public:
    ScriptedRecordset(ScriptedDatabase& database, Connection* creator, std::string session);
    ~ScriptedRecordset() override;
    ScriptedRecordset(const ScriptedRecordset&) = delete;
    ScriptedRecordset& operator=(const ScriptedRecordset&) = delete;

    /// Opens it with the result of Connection::Execute.
    void fill(const std::string& source, Table table);

    void Open(const std::string& source, const cashflow::ActiveConnection& connection, CursorType cursorType,
              LockType lockType) override;
    void Close() override;
    [[nodiscard]] ObjectState State() const override { return open_ ? ObjectState::Open : ObjectState::Closed; }
    [[nodiscard]] std::string Source() const override;
    [[nodiscard]] bool EndOfFile() const override;
    [[nodiscard]] std::int32_t RecordCount() const override;
    void MoveFirst() override;
    void MoveNext() override;
    [[nodiscard]] FieldList& Fields() override;
    void Filter(const std::string& criteria) override;
    [[nodiscard]] std::string Filter() const override { return filter_; }
    void CursorLocation(cashflow::CursorLocation location) override;
    [[nodiscard]] cashflow::CursorLocation CursorLocation() const override { return location_; }
    void ActiveConnection(const cashflow::ActiveConnection& connection) override { active_ = connection; }
    [[nodiscard]] cashflow::ActiveConnection ActiveConnection() const override { return active_; }
    void AddNew() override;
    void Update() override;

private:
    [[nodiscard]] int Count() const override;
    [[nodiscard]] const std::string& Name(int position) const override;
    [[nodiscard]] bool Has(std::string_view name) const override;
    [[nodiscard]] Variant Item(std::string_view name) const override;
    [[nodiscard]] Variant Item(int position) const override;
    void Item(std::string_view name, const Variant& value) override;

    void needOpen() const;
    void needWritable() const;
    [[nodiscard]] std::size_t position(std::string_view name) const;
    [[nodiscard]] std::size_t currentRow() const;
    void showAll();

    ScriptedDatabase& database_;
    Connection* creator_;
    std::string session_;
    Table table_;
    std::vector<std::size_t> shown_;
    std::size_t at_ = 0;
    bool open_ = false;
    bool writable_ = false;
    bool adding_ = false;
    bool changed_ = false;
    std::string source_;
    std::string filter_;
    cashflow::CursorLocation location_ = cashflow::CursorLocation::Server;
    cashflow::ActiveConnection active_;
};

} // namespace z7::cashflow::test
