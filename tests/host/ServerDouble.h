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

/// A server that understands the statements with which an account is made, and no others. It keeps databases, tables
/// and rows, undoes what is not committed, and fails where it is told to.
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
        std::vector<std::vector<std::string>> rows; ///< the texts of the given values, "(null)" for null
        friend bool operator==(const Table& a, const Table& b) {
            return a.columns.size() == b.columns.size() && a.rows == b.rows;
        }
    };
    /// What the server holds: databases, and in them tables and views by their names.
    using Content = std::map<std::string, std::map<std::string, Table>>;

    ServerDouble();
    ServerDouble(const ServerDouble&) = delete;
    ServerDouble& operator=(const ServerDouble&) = delete;
    ~ServerDouble();

    /// Makes closed connections to this server, which they must not outlive, as their record sets must not outlive them.
    [[nodiscard]] std::function<std::unique_ptr<Connection>()> connections();

    Content content;                      ///< of a transaction that is open too
    bool ignoresLetterCase = true;        ///< for databases that were not made with a collation that does
    std::string loginDatabase = "master"; ///< where a login goes whose string names no database
    std::set<std::string> refusedRows;    ///< first values of the rows that break a key

    /// The n-th call from now on, counted from 1, fails: an Open, a statement, a row, an end of a transaction. If it
    /// cuts the line the server undoes what is not committed; else that is left to the client.
    void failAt(std::size_t n, bool cutsLine) {
        failAt_ = calls_ + n;
        cutsLine_ = cutsLine;
    }
    /// Whether the call that was to fail has come.
    [[nodiscard]] bool hasFailed() const noexcept { return calls_ >= failAt_; }
    /// How many calls there were.
    [[nodiscard]] std::size_t calls() const noexcept { return calls_; }
    /// "open DATABASE", "begin", "commit", "rollback", "close", "row TABLE", and each statement by its first line.
    [[nodiscard]] const std::vector<std::string>& journal() const noexcept { return journal_; }
    [[nodiscard]] std::size_t openConnections() const noexcept { return open_; }

private:
    friend class DoubleConnection;

    void note(const std::string& event);

    std::vector<std::string> journal_;
    std::set<std::string> caseBlind_; ///< databases whose collation ignores letter case
    std::size_t calls_ = 0;
    std::size_t failAt_ = 0;
    bool cutsLine_ = false;
    std::size_t open_ = 0;
};

} // namespace z7::cashflow::host
