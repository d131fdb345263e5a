#include "adapters/odbc/databaseError.h"

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/odbc/OdbcReason.h"

#include <algorithm>
#include <string_view>

namespace z7::cashflow::odbc {
namespace {

constexpr int mostRecords = 16;

bool isWarning(const DiagnosticRecord& record) { return record.state.starts_with("01"); }

/// FreeTDS numbers its own messages from 20000 to 20999, which the server never uses.
bool isOfDriver(const DiagnosticRecord& record) {
    return record.native <= 0 || (record.native >= 20000 && record.native <= 20999);
}

bool tellsLostConnection(const DiagnosticRecord& record) {
    constexpr int readFailed = 20004;
    constexpr int writeFailed = 20006;
    constexpr int unexpectedEnd = 20017;
    constexpr int connectionIsDead = 20047;
    const bool ofFreeTds = record.native == readFailed || record.native == writeFailed ||
                           record.native == unexpectedEnd || record.native == connectionIsDead;
    return record.state.starts_with("08") || ofFreeTds;
}

std::vector<DiagnosticRecord> recordsOf(short handleType, Handle handle) {
    std::vector<DiagnosticRecord> records;
    DiagnosticRecord record;
    for (int number = 1; number <= mostRecords && diagnosticRecord(handleType, handle, number, record); ++number) {
        records.push_back(record);
    }
    return records;
}

/// The lower, the more informative.
int rank(const DiagnosticRecord& record) {
    return isWarning(record) ? 3 : tellsLostConnection(record) ? 2 : isOfDriver(record) ? 1 : 0;
}

/// "[unixODBC][FreeTDS][SQL Server]Login failed" without the vendors' names.
std::string bareText(std::string text) {
    while (text.starts_with('[')) {
        const std::size_t end = text.find(']');
        if (end == std::string::npos || end + 1 >= text.size()) {
            break;
        }
        text.erase(0, end + 1);
    }
    const std::size_t last = text.find_last_not_of(" \r\n\t");
    text.erase(last == std::string::npos ? 0 : last + 1);
    return text;
}

int numberOf(const DiagnosticRecord& record) {
    if (record.native > 0) {
        return record.native;
    }
    if (record.state == "IM002" || record.state == "IM003" || record.state == "01000") {
        return errors::driverNotFound;
    }
    if (record.state == "28000") {
        return errors::loginFailed;
    }
    if (record.state.starts_with("08")) {
        return errors::serverNotReached;
    }
    return record.state.starts_with("HYT") ? errors::lockTimeout : errors::unspecified;
}

Error errorOf(const std::vector<DiagnosticRecord>& records, const std::vector<std::string>& secrets) {
    if (records.empty()) {
        return {errorSource, {OdbcReason::driverSilent}, "HY000"};
    }
    const DiagnosticRecord& first = *std::min_element(records.begin(), records.end(),
                                                      [](const auto& a, const auto& b) { return rank(a) < rank(b); });
    std::string text = bareText(first.text);
    for (const DiagnosticRecord& record : records) {
        const std::string more = bareText(record.text);
        if (&record != &first && !isWarning(record) && text.find(more) == std::string::npos) {
            text += " " + more;
        }
    }
    return {numberOf(first), errorSource, {Reason::verbatim, {withoutSecrets(std::move(text), secrets)}}, first.state};
}

} // namespace

DatabaseError databaseError(short handleType, Handle handle, const std::vector<std::string>& secrets) {
    const std::vector<DiagnosticRecord> records = recordsOf(handleType, handle);
    return {errorOf(records, secrets), std::any_of(records.begin(), records.end(), tellsLostConnection)};
}

} // namespace z7::cashflow::odbc
