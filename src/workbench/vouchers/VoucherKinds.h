#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// The voucher kinds of an account: their numbers and their signs, such as 2 and 付.
class VoucherKinds {
public:
    struct Kind {
        std::int16_t number = 0;
        std::string sign; ///< without blanks at its ends; empty if the kind has none
    };

    VoucherKinds() = default;
    /// Takes kinds in any order; a number that comes again is left out.
    explicit VoucherKinds(std::vector<Kind> kinds);
    /// Reads those of an account. Errors of the database.
    [[nodiscard]] static VoucherKinds read(Connection& connection);

    /// All of them by number.
    [[nodiscard]] const std::vector<Kind>& all() const noexcept { return kinds_; }
    /// The sign of a kind; empty if the account has no such kind or the kind has no sign.
    [[nodiscard]] std::string sign(std::int16_t kind) const;
    /// The kinds that have a sign: none if it is unknown, several if it is ambiguous.
    [[nodiscard]] std::vector<std::int16_t> kindsOf(const std::string& sign) const;

    /// A key as people read it: with the sign of its kind where that sign stands for this kind alone and can be read
    /// back, else with the number.
    [[nodiscard]] std::string keyText(const VoucherKey& key) const;
    /// The key that was written; nothing if its sign is unknown or ambiguous.
    [[nodiscard]] std::optional<VoucherKey> resolved(const WrittenVoucherKey& written) const;

private:
    std::vector<Kind> kinds_;
};

} // namespace z7::cashflow::workbench
