#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The voucher kinds of an account: their numbers and signs, such as 2 and 付.
class VoucherKinds {
public:
    /// A voucher kind.
    struct Kind {
        std::int16_t number = 0; ///< isignseq, the number in voucher keys
        std::string sign;        ///< without leading and trailing blanks; empty if the kind has none
    };

    VoucherKinds() = default;
    /// Takes kinds in any order; repeated numbers are ignored.
    explicit VoucherKinds(std::vector<Kind> kinds);
    /// Reads the kinds of an account. Errors of the database pass through.
    [[nodiscard]] static VoucherKinds read(Connection& connection);

    /// All kinds, sorted by number.
    [[nodiscard]] const std::vector<Kind>& all() const noexcept { return kinds_; }
    /// The sign of a kind; empty if the kind does not exist or has no sign.
    [[nodiscard]] std::string sign(std::int16_t kind) const;
    /// The numbers of the kinds with a sign: none if it is unknown, several if it is ambiguous.
    [[nodiscard]] std::vector<std::int16_t> kindsOf(const std::string& sign) const;

    /// A key as people read it: with the kind's sign if that sign is unique and can be parsed again, otherwise
    /// with its number.
    [[nodiscard]] std::string keyText(const VoucherKey& key) const;
    /// Looks up the sign of a written key; empty if the sign is unknown or ambiguous.
    [[nodiscard]] std::optional<VoucherKey> resolved(const WrittenVoucherKey& written) const;

private:
    std::vector<Kind> kinds_;
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
