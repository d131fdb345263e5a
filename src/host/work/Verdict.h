#pragma once

#include "host/text/HostText.h"
#include "host/text/reasonText.h"
#include "host/work/Allotment.h"
#include "host/work/Session.h"
#include "host/work/VoucherList.h"

#include <memory>
#include <string>

namespace z7::cashflow::host {

/// What the check says of a voucher's rows.
struct Verdict {
    enum class Kind {
        meets,   ///< there are rows, and they meet the voucher
        nothing, ///< there are no rows, and the voucher needs none because its cash lines cancel out
        noCash,  ///< there are no rows, and the voucher has no line on a cash-flow account
        refused  ///< the rows, or their absence, do not meet the voucher
    };
    Kind kind = Kind::refused;
    std::string reason; ///< why it was refused, as the library tells it; empty else
};

/// The rows that are stored for a voucher, or nothing if none are. The context's year is then that of the voucher's date.
[[nodiscard]] std::shared_ptr<CashFlowCollection> storedRows(Session& session, const VoucherHead& voucher);

/// Freshly generated rows of a voucher; empty if it needs none.
[[nodiscard]] std::shared_ptr<CashFlowCollection> generatedRows(Session& session, const VoucherHead& voucher);

/// Compares rows with their voucher. No rows, or a null pointer, are checked as an empty collection.
[[nodiscard]] Verdict judge(Session& session, const VoucherHead& voucher, std::shared_ptr<CashFlowCollection> rows);

/// What is told of a save that came to an outcome, with places for the voucher and the number of rows.
[[nodiscard]] HostText savedText(Outcome outcome) noexcept;

/// A verdict in words.
[[nodiscard]] std::string verdictText(Language language, const Verdict& verdict);

} // namespace z7::cashflow::host
