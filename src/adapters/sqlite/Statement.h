#pragma once

#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace z7::cashflow::sqlite {

/// A prepared statement of the database library, finalized with its owner. Positions of parameters count from 1.
class Statement {
public:
    /// Prepares one statement. An Error reports why the database refuses it.
    Statement(sqlite3* handle, std::string_view sql);

    [[nodiscard]] sqlite3_stmt* get() const noexcept { return statement_.get(); }
    [[nodiscard]] sqlite3* handle() const noexcept;
    void bind(int position, const Variant& value);
    /// The text must live until the statement is reset.
    void bindBorrowed(int position, std::string_view text);
    void bind(int position, std::int64_t value);
    void bind(int position, double value);
    /// True for a row, false at the end. For an error of the database, the last place of the remark is filled
    /// with the error's text.
    bool step(const Explanation& remarkWhenLocked = {});
    void reset() noexcept;
    /// The text with its values inserted.
    [[nodiscard]] std::string expanded() const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    void check(int code) const;

    std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

/// Resets a statement at the end of its lifetime, so that no read stays open after a result or an error.
class StatementReset {
public:
    explicit StatementReset(Statement& statement) : statement_(statement) {}
    StatementReset(const StatementReset&) = delete;
    StatementReset& operator=(const StatementReset&) = delete;
    ~StatementReset() { statement_.reset(); }

private:
    Statement& statement_;
};

/// Runs a text with one or more statements without results.
void executeScript(sqlite3* handle, const std::string& sql, const Explanation& remarkWhenLocked = {});
/// The first column of a query's first row, 0 if there is no row.
[[nodiscard]] std::int64_t queryInteger(sqlite3* handle, const std::string& sql);

} // namespace z7::cashflow::sqlite
