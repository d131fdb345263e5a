#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow {

/// Puts rows of texts into one table, each value converted to its column's type. It works inside the caller's
/// transaction, if there is one, and opens none: a caller who wants all rows or none begins one.
class RowLoader {
public:
    virtual ~RowLoader() = default;

    /// Adds one row; an empty optional is null. A text is stored as it is. Numbers are read strictly and without
    /// thousands commas, amounts with at most four decimals, dates year first, bits as 0, 1, true or false; blanks
    /// around these do not count, and blanks alone are null. An error that names table, column and reason if the number
    /// of values is wrong, a value does not fit its column, or the database refuses the row, such as for a key that
    /// exists already.
    virtual void add(const std::vector<std::optional<std::string_view>>& values) = 0;
    /// The number of rows that were added.
    [[nodiscard]] virtual std::int64_t count() const noexcept = 0;
};

/// The tables of one open session, as far as rows of texts can be put into them. The session must outlive it.
class LoadableTables {
public:
    virtual ~LoadableTables() = default;

    /// The tables, without views, of the account's database and of the system database, by their plain names in
    /// alphabetical order.
    [[nodiscard]] virtual std::vector<std::string> names() = 0;
    /// A loader for some columns of one of them. Error 208 if there is no such table; an error that names table and
    /// column if a column is unknown or named twice, or if one that must have a value is not named.
    [[nodiscard]] virtual std::unique_ptr<RowLoader> loader(const std::string& table,
                                                            const std::vector<std::string>& columns) = 0;
};

} // namespace z7::cashflow
