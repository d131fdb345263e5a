#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A server that understands only the statements that create an account. It keeps databases, tables and rows, rolls
/// back what is not committed, and fails on request.
class ServerDouble {
public:
    struct Column {
        std::string name;
        std::string type;
        int length = 0; ///< in bytes
        bool nullable = true;
        bool numbered = false;
        bool filled = false; ///< has a default
    };
    /// Columns and rows of a table; a view has no columns.
    struct Table {
        std::vector<Column> columns;
        std::vector<std::vector<std::string>> rows; ///< the values as text, "(null)" for null
        friend bool operator==(const Table& a, const Table& b) {
            return a.columns.size() == b.columns.size() && a.rows == b.rows;
        }
    };
    /// The server's databases, and their tables and views by name.
    using Content = std::map<std::string, std::map<std::string, Table>>;

    ServerDouble();
    ServerDouble(const ServerDouble&) = delete;
    ServerDouble& operator=(const ServerDouble&) = delete;
    ~ServerDouble();

    /// Returns a function that creates closed connections to this server. They and their record sets must not
    /// outlive it.
    [[nodiscard]] std::function<std::unique_ptr<Connection>()> connections();

    Content content;                      ///< including an open transaction
    bool ignoresLetterCase = true;        ///< for databases created without a collation
    std::string loginDatabase = "master"; ///< database of a login whose string names none
    std::optional<int> schemaVersion;     ///< as the account reports it; without one it has no such view
    std::set<std::string> refusedRows;    ///< first values of rows that violate a key

    /// The n-th call from now, counted from 1, fails: an Open, a statement, a row, an end of a transaction. If
    /// it also cuts the connection, the server rolls back; otherwise that is left to the client.
    void failAt(std::size_t n, bool cutsLine) {
        failAt_ = calls_ + n;
        cutsLine_ = cutsLine;
    }
    /// Whether that call has been made.
    [[nodiscard]] bool hasFailed() const noexcept { return calls_ >= failAt_; }
    /// The number of calls.
    [[nodiscard]] std::size_t calls() const noexcept { return calls_; }
    /// "open DATABASE", "begin", "commit", "rollback", "close", "row TABLE", and each statement by its first
    /// line.
    [[nodiscard]] const std::vector<std::string>& journal() const noexcept { return journal_; }
    [[nodiscard]] std::size_t openConnections() const noexcept { return open_; }

private:
    friend class DoubleSession;

    void note(const std::string& event);

    std::vector<std::string> journal_;
    std::set<std::string> caseBlind_; ///< databases with a case-insensitive collation
    std::size_t calls_ = 0;
    std::size_t failAt_ = 0;
    bool cutsLine_ = false;
    std::size_t open_ = 0;
};

} // namespace z7::cashflow::host
