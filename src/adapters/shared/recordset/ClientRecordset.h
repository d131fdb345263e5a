#pragma once

#include "adapters/shared/recordset/Backend.h"
#include "adapters/shared/recordset/RowFilter.h"
#include "z7cashflow/ports/Recordset.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::shared {

/// The recordset that the database adapters share: it holds its rows on the client and uses the database through a
/// Backend only to run its statement and to write records.
///
/// Leaving a record with pending changes writes them first, as on the platform. Closing discards pending changes:
/// the database has refused them, or nobody has asked to write them.
class ClientRecordset final : public Recordset, private FieldList {
public:
    explicit ClientRecordset(std::shared_ptr<Backend> backend);

    /// Takes the result of a statement that has already run, for Connection::Execute. Without rows it stays
    /// closed.
    void present(Result result, std::string source, const cashflow::ActiveConnection& connection);

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

private:
    [[nodiscard]] int Count() const override;
    [[nodiscard]] const std::string& Name(int position) const override;
    [[nodiscard]] bool has(std::string_view name) const override;
    [[nodiscard]] Variant Item(std::string_view name) const override;
    [[nodiscard]] Variant Item(int position) const override;
    void Item(std::string_view name, const Variant& value) override;

    void requireOpen() const;
    const RowSet& rows() const;
    int position(std::string_view name) const;
    std::size_t shownCount() const;
    void standOn(std::size_t shown);
    RowWriter& writer() const;
    void writePending();
    void addPendingRow();

    std::shared_ptr<Backend> backend_;
    cashflow::ActiveConnection connection_;
    cashflow::CursorLocation location_ = cashflow::CursorLocation::client;
    std::string source_;

    std::unique_ptr<RowSet> rows_; ///< a null pointer while the recordset is closed
    std::shared_ptr<Runner> runner_;
    std::shared_ptr<RowWriter> writer_;

    RowFilter filter_;
    std::string criteria_;
    std::optional<std::vector<std::uint32_t>> shown_; ///< the rows that match the filter; empty without a filter
    std::size_t shownAt_ = 0;                         ///< position in them
    std::optional<std::size_t> row_;                  ///< the current record's row, if it has one
    bool adding_ = false;                             ///< the current record is new and not written yet
    std::vector<Change> pending_;
};

} // namespace z7::cashflow::shared
