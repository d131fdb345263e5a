#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Loads rows of text into one table, converting each value to its column's type. It works in the caller's
/// transaction, if there is one, and begins none.
class RowLoader {
public:
    virtual ~RowLoader() = default;

    /// Adds one row; an empty optional is null. A text is stored unchanged. Numbers must be well-formed and
    /// without thousands separators, amounts have at most four decimals, dates begin with the year, bits are 0,
    /// 1, true or false; blanks around these are ignored, and only blanks mean null. An error that names table,
    /// column and reason if the number of values is wrong, a value does not fit its column, or the database
    /// refuses the row, for example because its key already exists.
    virtual void add(const std::vector<std::optional<std::string_view>>& values) = 0;
    /// The number of rows added.
    [[nodiscard]] virtual std::int64_t count() const noexcept = 0;
};

/// The tables of one open session into which rows of text can be loaded. The session must outlive it.
class LoadableTables {
public:
    virtual ~LoadableTables() = default;

    /// The tables, without views, of the account's database and of the system database, by plain name in
    /// alphabetical order.
    [[nodiscard]] virtual std::vector<std::string> names() = 0;
    /// A loader for some columns of one of them. Error 208 if the table does not exist; an error that names
    /// table and column if a column is unknown or named twice, or if a required column is missing.
    [[nodiscard]] virtual std::unique_ptr<RowLoader> loader(const std::string& table,
                                                            const std::vector<std::string>& columns) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
