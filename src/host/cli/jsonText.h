#pragma once

#include "host/text/Language.h"
#include "workbench/vouchers/VoucherKinds.h"
#include "workbench/vouchers/VoucherResult.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/Variant.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace z7::cashflow::host {

/// JSON on one line, with every control character escaped and every byte that is not valid UTF-8 replaced.
[[nodiscard]] std::string jsonText(const nlohmann::ordered_json& value);

/// The key of a voucher, with the sign of its kind, to which callers add members:
/// {"voucher":"2013/1/2/5","sign":"付"}.
[[nodiscard]] nlohmann::ordered_json keyJson(const workbench::VoucherKey& key, const workbench::VoucherKinds& kinds);

/// The result of a voucher: {"voucher":"2013/1/2/5","sign":"付","outcome":"stored","rows":2}. A refused voucher has
/// "error", one that was stored although its rows do not match has "mismatch", and one whose rows were removed has
/// their number as "removed".
[[nodiscard]] nlohmann::ordered_json resultJson(const workbench::VoucherResult& result,
                                                const workbench::VoucherKinds& kinds, Language language);

/// A refusal: {"number":10009,"description":"...","findings":[{"kind":"no-template","line":1,...}]}. The
/// description is that of the error, or the program's own text in the given language; "findings" is left out if
/// there are none.
[[nodiscard]] nlohmann::ordered_json errorJson(const workbench::Refusal& refusal, Language language);

/// The word for a kind of finding, as in the findings of a refusal: "no-template".
[[nodiscard]] const char* findingWord(workbench::Finding::Kind kind) noexcept;

/// Rows as an array of objects with all their fields by name: null as null, numbers as numbers, dates as
/// "yyyy-mm-dd". Rows from a document look the same.
[[nodiscard]] nlohmann::ordered_json rowsJson(const CashFlowCollection& rows);

/// One value: null as null, numbers as numbers, dates as "yyyy-mm-dd".
[[nodiscard]] nlohmann::ordered_json valueJson(const Variant& value);

/// The word for an outcome in JSON: "stored", "no-cash", "nothing" or "refused".
[[nodiscard]] const char* outcomeWord(workbench::Outcome outcome) noexcept;

} // namespace z7::cashflow::host
