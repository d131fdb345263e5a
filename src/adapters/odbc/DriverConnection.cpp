#include "adapters/odbc/DriverConnection.h"

#include "adapters/odbc/OdbcReason.h"
#include "adapters/odbc/databaseError.h"

#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <utility>

namespace z7::cashflow::odbc {
namespace {

constexpr std::intptr_t loginSeconds = 15;

/// ODBC passes integer attributes as pointers.
SQLPOINTER attribute(std::intptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): it is what ODBC asks for
}

Handle allocated(SQLSMALLINT type, Handle parent) {
    SQLHANDLE handle = nullptr;
    if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle))) {
        throw Error(errorSource, {OdbcReason::noMemory}, "HY001");
    }
    return handle;
}

} // namespace

void OwnedHandle::reset(short type, Handle handle) noexcept {
    if (handle_ != nullptr) {
        SQLFreeHandle(type_, handle_);
    }
    type_ = type;
    handle_ = handle;
}

Environment::Environment() : handle_(SQL_HANDLE_ENV, allocated(SQL_HANDLE_ENV, nullptr)) {
    SQLSetEnvAttr(handle_.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3), 0);
}

DriverConnection::DriverConnection(std::shared_ptr<Environment> environment, const ConnectionOptions& options)
    : environment_(std::move(environment)),
      connection_(SQL_HANDLE_DBC, allocated(SQL_HANDLE_DBC, environment_->get())) {
    SQLSetConnectAttr(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT, attribute(loginSeconds), SQL_IS_UINTEGER);
    if (!SQL_SUCCEEDED(driverConnect(connection_.get(), options.driverText))) {
        const Error error = databaseError(SQL_HANDLE_DBC, connection_.get(), options.secrets).error;
        Explanation why = error.asCause();
        if (error.number() == errors::driverNotFound) {
            why = {OdbcReason::driverMissing, {withoutSecrets(options.driver, options.secrets)}, {std::move(why)}};
        }
        if (!options.target.empty()) {
            why = {OdbcReason::connectingTo, {withoutSecrets(options.target, options.secrets)}, {std::move(why)}};
        }
        throw Error(error.number(), error.source(), std::move(why), error.sqlState());
    }
    connected_ = true;
}

DriverConnection::~DriverConnection() {
    statement_.reset();
    if (connected_) {
        SQLDisconnect(connection_.get()); // the server rolls back what was not committed
    }
}

Handle DriverConnection::freshStatement() {
    if (statement_.get() == nullptr) {
        statement_.reset(SQL_HANDLE_STMT, allocated(SQL_HANDLE_STMT, connection_.get()));
    } else {
        SQLFreeStmt(statement_.get(), SQL_CLOSE);
        SQLFreeStmt(statement_.get(), SQL_RESET_PARAMS);
    }
    return statement_.get();
}

bool DriverConnection::isDead() const noexcept {
    SQLUINTEGER dead = SQL_CD_FALSE;
    return SQL_SUCCEEDED(SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr)) &&
           dead == SQL_CD_TRUE;
}

} // namespace z7::cashflow::odbc
