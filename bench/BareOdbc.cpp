#include "BareOdbc.h"

#include "Measure.h"

#include "adapters/odbc/SqliteDialect.h"
#include "adapters/odbc/nativeCalls.h"
#include "z7cashflow/support/conversions.h"

#include <sql.h>
#include <sqlext.h>

namespace z7::cashflow::bench {

BareOdbc::BareOdbc(const std::string& connectionString) {
    require(SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_)), "the driver manager");
    // ODBC passes integer attributes as pointers.
    auto* const version = reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3); // NOLINT(performance-no-int-to-ptr)
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, version, 0);
    require(SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_)), "the connection's handle");
    require(SQL_SUCCEEDED(odbc::driverConnect(connection_, connectionString)), "connecting");
    require(SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement_)), "the statement's handle");
}

BareOdbc::~BareOdbc() {
    SQLFreeHandle(SQL_HANDLE_STMT, statement_);
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

std::vector<odbc::FetchAs> BareOdbc::fetchPlan(const std::string& text) {
    execute(text);
    SQLSMALLINT count = 0;
    require(SQL_SUCCEEDED(SQLNumResultCols(statement_, &count)), text);
    std::vector<odbc::FetchAs> plan;
    const odbc::SqliteDialect dialect;
    for (int position = 1; position <= count; ++position) {
        odbc::DriverColumn column;
        require(SQL_SUCCEEDED(odbc::describeColumn(statement_, position, column)), text);
        odbc::describeOrigin(statement_, position, column);
        plan.push_back(dialect.resultColumn(column).fetchAs);
    }
    SQLFreeStmt(statement_, SQL_CLOSE);
    return plan;
}

std::size_t BareOdbc::run(const std::string& text, const std::vector<odbc::FetchAs>& plan) {
    execute(text);
    std::size_t rows = 0;
    while (!plan.empty() && fetch()) {
        ++rows;
        int position = 0;
        for (const odbc::FetchAs fetchAs : plan) {
            readLength(++position, fetchAs);
        }
    }
    SQLFreeStmt(statement_, SQL_CLOSE);
    return rows;
}

std::size_t BareOdbc::runBound(const std::string& text, const std::vector<odbc::FetchAs>& plan) {
    execute(text);
    bound_.resize(plan.size());
    SQLUSMALLINT position = 0;
    for (Bound& bound : bound_) {
        const odbc::FetchAs fetchAs = plan[position++];
        static_assert(sizeof(bound.length) == sizeof(SQLLEN));
        auto* length = reinterpret_cast<SQLLEN*>(&bound.length);
        SQLRETURN answer = SQL_ERROR;
        if (fetchAs == odbc::FetchAs::whole) {
            answer = SQLBindCol(statement_, position, SQL_C_SBIGINT, &bound.whole, sizeof(bound.whole), length);
        } else if (fetchAs == odbc::FetchAs::real) {
            answer = SQLBindCol(statement_, position, SQL_C_DOUBLE, &bound.real, sizeof(bound.real), length);
        } else {
            answer = SQLBindCol(statement_, position, SQL_C_CHAR, bound.text.data(),
                                static_cast<SQLLEN>(bound.text.size()), length);
        }
        require(SQL_SUCCEEDED(answer), text);
    }
    std::size_t rows = 0;
    while (fetch()) {
        ++rows;
    }
    SQLFreeStmt(statement_, SQL_CLOSE);
    SQLFreeStmt(statement_, SQL_UNBIND);
    return rows;
}

std::vector<std::string> BareOdbc::values(const std::string& text, const std::vector<odbc::FetchAs>& plan) {
    execute(text);
    std::vector<std::string> values;
    while (!plan.empty() && fetch()) {
        int position = 0;
        for (const odbc::FetchAs fetchAs : plan) {
            const long length = readLength(++position, fetchAs);
            if (length == SQL_NULL_DATA) {
                values.emplace_back("null");
            } else if (fetchAs == odbc::FetchAs::whole) {
                values.push_back(std::to_string(whole_));
            } else if (fetchAs == odbc::FetchAs::real) {
                values.push_back(numberText(real_));
            } else {
                std::string text = text_.substr(0, static_cast<std::size_t>(length));
                const auto number = fetchAs == odbc::FetchAs::numberOrText ? readNumber(text) : std::nullopt;
                values.push_back(number ? numberText(*number) : std::move(text));
            }
        }
    }
    SQLFreeStmt(statement_, SQL_CLOSE);
    return values;
}

void BareOdbc::execute(const std::string& text) {
    const SQLRETURN answer = odbc::executeDirect(statement_, text);
    require(SQL_SUCCEEDED(answer) || answer == SQL_NO_DATA, text);
}

bool BareOdbc::fetch() {
    const SQLRETURN answer = SQLFetch(statement_);
    require(SQL_SUCCEEDED(answer) || answer == SQL_NO_DATA, "fetching");
    return answer != SQL_NO_DATA;
}

long BareOdbc::readLength(int position, odbc::FetchAs fetchAs) {
    SQLLEN length = 0;
    const auto column = static_cast<SQLUSMALLINT>(position);
    SQLRETURN answer = SQL_ERROR;
    switch (fetchAs) {
    case odbc::FetchAs::whole:
        answer = SQLGetData(statement_, column, SQL_C_SBIGINT, &whole_, sizeof(whole_), &length);
        break;
    case odbc::FetchAs::real:
        answer = SQLGetData(statement_, column, SQL_C_DOUBLE, &real_, sizeof(real_), &length);
        break;
    case odbc::FetchAs::date:
    case odbc::FetchAs::text:
    case odbc::FetchAs::numberOrText:
        answer = SQLGetData(statement_, column, SQL_C_CHAR, text_.data(), static_cast<SQLLEN>(text_.size()), &length);
        break;
    }
    require(answer == SQL_SUCCESS, "a value");
    return length;
}

void BareOdbc::require(bool succeeded, const std::string& what) const {
    if (succeeded) {
        return;
    }
    odbc::DiagnosticRecord record;
    const bool ofStatement = statement_ != nullptr;
    static_cast<void>(odbc::diagnosticRecord(ofStatement ? SQL_HANDLE_STMT : SQL_HANDLE_DBC,
                                             ofStatement ? statement_ : connection_, 1, record));
    bench::require(false, what + ": " + record.text);
}

} // namespace z7::cashflow::bench
