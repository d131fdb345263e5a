#pragma once

#include "standins/AdoConnection.h"
#include "standins/AdoDatabase.h"
#include "standins/AutomationObject.h"
#include "z7cashflow/ports/Recordset.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow::test {

/// An automation object that answers like an ADO recordset, over any recordset of the library. Beyond what those do,
/// and as documented for ADO:
/// - MoveFirst without records is error 3021, Close during a change 3219, Update of a read-only recordset 3251.
/// - A forward-only or dynamic cursor on the server does not know its number of records.
/// - Only a recordset on the client can be cut off from its connection.
/// - Without a filter, Filter is the number 0.
class AdoRecordset final : public AutomationObject {
public:
    /// A new one.
    explicit AdoRecordset(std::shared_ptr<AdoDatabase> database);
    /// The result of Execute.
    AdoRecordset(std::shared_ptr<AdoDatabase> database, ComPtr<AdoConnection> connection,
                 std::shared_ptr<Recordset> records, std::int32_t cursorLocation);

    /// The records. Error 3704 if it is closed.
    [[nodiscard]] Recordset& records();
    /// Changes a value of the current record.
    void setValue(const std::string& field, const Variant& value);
    /// The connection has been closed.
    void connectionClosed();

private:
    ~AdoRecordset() override;
    void addProperties();
    void addMethods();
    [[nodiscard]] bool isOpen() const;
    void requireOpen() const;
    void open(const Call& call);
    void close();
    void setActiveConnection(const Call& call);
    void chooseConnection(const Call& call, std::size_t position);
    void onDatabase(const std::function<void()>& action);
    [[nodiscard]] OwnedVariant recordCount();
    void afterRepositioning() { isBeforeFirst_ = records().atEnd(); }
    [[nodiscard]] bool isOnServer() const {
        return cursorLocation_ == static_cast<std::int32_t>(CursorLocation::server);
    }

    std::shared_ptr<AdoDatabase> database_;
    ComPtr<AdoConnection> connection_;
    std::optional<std::string> connectionString_; ///< instead of a connection
    std::shared_ptr<Recordset> records_;
    std::string source_;
    std::int32_t cursorLocation_ = static_cast<std::int32_t>(CursorLocation::server);
    CursorType cursorType_ = CursorType::forwardOnly;
    LockType lockType_ = LockType::readOnly;
    bool isBeforeFirst_ = false; ///< it has no records
    bool isChanging_ = false;
};

} // namespace z7::cashflow::test
