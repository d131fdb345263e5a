#include "desks/CutCalls.h"

#include <sql.h>
#include <sqlext.h>

#include <cstring>
#include <map>
#include <set>
#include <string_view>

using z7::cashflow::odbc::Cut;

// The linker redirects calls of NAME to __wrap_NAME; __real_NAME is the driver manager's function.
extern "C" {
SQLRETURN realAllocHandle(SQLSMALLINT, SQLHANDLE, SQLHANDLE*) __asm__("__real_SQLAllocHandle");
SQLRETURN realFreeHandle(SQLSMALLINT, SQLHANDLE) __asm__("__real_SQLFreeHandle");
SQLRETURN realDriverConnect(SQLHDBC, SQLHWND, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLSMALLINT*,
                            SQLUSMALLINT) __asm__("__real_SQLDriverConnect");
SQLRETURN realDisconnect(SQLHDBC) __asm__("__real_SQLDisconnect");
SQLRETURN realExecDirect(SQLHSTMT, SQLCHAR*, SQLINTEGER) __asm__("__real_SQLExecDirect");
SQLRETURN realExecute(SQLHSTMT) __asm__("__real_SQLExecute");
SQLRETURN realPrimaryKeys(SQLHSTMT, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR*,
                          SQLSMALLINT) __asm__("__real_SQLPrimaryKeys");
SQLRETURN realFetch(SQLHSTMT) __asm__("__real_SQLFetch");
SQLRETURN realGetDiagRec(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLCHAR*, SQLINTEGER*, SQLCHAR*, SQLSMALLINT,
                         SQLSMALLINT*) __asm__("__real_SQLGetDiagRec");

SQLRETURN wrapAllocHandle(SQLSMALLINT, SQLHANDLE, SQLHANDLE*) __asm__("__wrap_SQLAllocHandle");
SQLRETURN wrapFreeHandle(SQLSMALLINT, SQLHANDLE) __asm__("__wrap_SQLFreeHandle");
SQLRETURN wrapDriverConnect(SQLHDBC, SQLHWND, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLSMALLINT*,
                            SQLUSMALLINT) __asm__("__wrap_SQLDriverConnect");
SQLRETURN wrapDisconnect(SQLHDBC) __asm__("__wrap_SQLDisconnect");
SQLRETURN wrapExecDirect(SQLHSTMT, SQLCHAR*, SQLINTEGER) __asm__("__wrap_SQLExecDirect");
SQLRETURN wrapExecute(SQLHSTMT) __asm__("__wrap_SQLExecute");
SQLRETURN wrapPrimaryKeys(SQLHSTMT, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR*,
                          SQLSMALLINT) __asm__("__wrap_SQLPrimaryKeys");
SQLRETURN wrapFetch(SQLHSTMT) __asm__("__wrap_SQLFetch");
SQLRETURN wrapGetDiagRec(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLCHAR*, SQLINTEGER*, SQLCHAR*, SQLSMALLINT,
                         SQLSMALLINT*) __asm__("__wrap_SQLGetDiagRec");
}

namespace {

// How a failing call reports its reason.
struct Reason {
    const char* state;
    int number;
    std::string_view text;
};
constexpr Reason lineCut{"08S01", 0, "[Cut]Communication link failure"};
constexpr Reason deadlock{"40001", 1205, "[Cut]Transaction was deadlocked and has been chosen as the victim."};

struct Wires {
    std::map<SQLHANDLE, SQLHANDLE> connectionOf; ///< of each statement
    std::set<SQLHANDLE> connected;
    std::set<SQLHANDLE> dead;                  ///< connections that are lost
    std::map<SQLHANDLE, const Reason*> failed; ///< why the last call of a handle failed
    int requestsToGo = 0;                      ///< 0 if requests are not counted
    Cut moment = Cut::beforeRequest;
    bool onlyEndsTransaction = false;
    bool fetchesCount = false;
    bool hasHappened = false;
};

Wires& wires() {
    static Wires all;
    return all;
}

void endTransaction(SQLHANDLE connection) {
    SQLHANDLE statement = nullptr;
    if (SQL_SUCCEEDED(realAllocHandle(SQL_HANDLE_STMT, connection, &statement))) {
        char rollback[] = "ROLLBACK"; // fails where no transaction is open
        realExecDirect(statement, reinterpret_cast<SQLCHAR*>(rollback), SQL_NTS);
        realFreeHandle(SQL_HANDLE_STMT, statement);
    }
}

void cutAll() {
    for (SQLHANDLE connection : wires().connected) {
        endTransaction(connection);
    }
    wires().dead = wires().connected;
}

/// Executes a request unless its connection was lost before, or is cut by it.
template <class Call> SQLRETURN request(SQLHANDLE handle, SQLHANDLE connection, Call&& call) {
    Wires& all = wires();
    all.failed.erase(handle);
    SQLRETURN answer = SQL_ERROR;
    if (!all.dead.contains(connection)) {
        const bool last = all.requestsToGo > 0 && --all.requestsToGo == 0;
        if (!last || all.moment == Cut::beforeAnswer) {
            answer = call();
        }
        if (!last) {
            return answer;
        }
        all.hasHappened = true;
        if (all.onlyEndsTransaction) {
            endTransaction(connection);
            all.failed[handle] = &deadlock;
            return SQL_ERROR;
        }
        cutAll();
    }
    all.failed[handle] = &lineCut;
    return SQL_ERROR;
}

} // namespace

SQLRETURN wrapAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle) {
    const SQLRETURN answer = realAllocHandle(type, parent, handle);
    if (type == SQL_HANDLE_STMT && SQL_SUCCEEDED(answer)) {
        wires().connectionOf[*handle] = parent;
    }
    return answer;
}

SQLRETURN wrapFreeHandle(SQLSMALLINT type, SQLHANDLE handle) {
    wires().connectionOf.erase(handle);
    wires().failed.erase(handle);
    wires().dead.erase(handle);
    return realFreeHandle(type, handle);
}

SQLRETURN wrapDriverConnect(SQLHDBC connection, SQLHWND window, SQLCHAR* text, SQLSMALLINT length, SQLCHAR* completed,
                            SQLSMALLINT room, SQLSMALLINT* completedLength, SQLUSMALLINT completion) {
    bool connected = false;
    const SQLRETURN answer = request(connection, connection, [&] {
        const SQLRETURN real =
            realDriverConnect(connection, window, text, length, completed, room, completedLength, completion);
        connected = SQL_SUCCEEDED(real);
        return real;
    });
    if (SQL_SUCCEEDED(answer)) {
        wires().connected.insert(connection);
    } else if (connected) { // only the answer was lost
        realDisconnect(connection);
    }
    return answer;
}

SQLRETURN wrapDisconnect(SQLHDBC connection) {
    wires().connected.erase(connection);
    return realDisconnect(connection);
}

SQLRETURN wrapExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    return request(statement, wires().connectionOf[statement], [&] { return realExecDirect(statement, text, length); });
}

SQLRETURN wrapExecute(SQLHSTMT statement) {
    return request(statement, wires().connectionOf[statement], [&] { return realExecute(statement); });
}

SQLRETURN wrapPrimaryKeys(SQLHSTMT statement, SQLCHAR* database, SQLSMALLINT databaseLength, SQLCHAR* owner,
                          SQLSMALLINT ownerLength, SQLCHAR* table, SQLSMALLINT tableLength) {
    return request(statement, wires().connectionOf[statement], [&] {
        return realPrimaryKeys(statement, database, databaseLength, owner, ownerLength, table, tableLength);
    });
}

SQLRETURN wrapFetch(SQLHSTMT statement) {
    return !wires().fetchesCount
               ? realFetch(statement)
               : request(statement, wires().connectionOf[statement], [&] { return realFetch(statement); });
}

SQLRETURN wrapGetDiagRec(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLCHAR* state, SQLINTEGER* native,
                         SQLCHAR* text, SQLSMALLINT room, SQLSMALLINT* length) {
    const auto failed = wires().failed.find(handle);
    if (failed == wires().failed.end()) {
        return realGetDiagRec(type, handle, number, state, native, text, room, length);
    }
    const Reason& reason = *failed->second;
    if (number != 1 || room <= static_cast<SQLSMALLINT>(reason.text.size())) {
        return SQL_NO_DATA;
    }
    std::memcpy(state, reason.state, 6);
    std::memcpy(text, reason.text.data(), reason.text.size());
    text[reason.text.size()] = 0;
    *native = reason.number;
    *length = static_cast<SQLSMALLINT>(reason.text.size());
    return SQL_SUCCESS;
}

namespace z7::cashflow::desks {

void CutCalls::cutAt(int request, Cut moment) {
    wires().requestsToGo = request;
    wires().moment = moment;
    wires().onlyEndsTransaction = false;
    wires().hasHappened = false;
}

bool CutCalls::chooseVictimAt(int request) {
    cutAt(request, Cut::beforeRequest);
    wires().onlyEndsTransaction = true;
    return true;
}

bool CutCalls::stopCounting() {
    wires().requestsToGo = 0;
    return wires().hasHappened;
}

void CutCalls::countFetches(bool count) { wires().fetchesCount = count; }

} // namespace z7::cashflow::desks
