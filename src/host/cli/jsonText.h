#pragma once

#include "host/text/Language.h"
#include "workbench/vouchers/Verdict.h"
#include "workbench/vouchers/VoucherKinds.h"
#include "workbench/vouchers/VoucherResult.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/Variant.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace z7::cashflow::host {

/// The version of the form of JSON that every line names, see docs/json.md.
inline constexpr int jsonForm = 1;

/// JSON on one line, with every control character escaped and every byte that is not valid UTF-8 replaced. A number
/// with decimals is written exactly: with two or four of them if it is an amount, otherwise with as many as it has.
[[nodiscard]] std::string jsonText(const nlohmann::ordered_json& value);

/// A record as a line of output: {"form":1,...} and a line break.
[[nodiscard]] std::string jsonLine(nlohmann::ordered_json record);

/// An amount, or a sum of amounts that was added up in doubles: rounded to four decimals, so that it has no binary
/// remainder. One that is too large for four decimals is left as it is.
[[nodiscard]] nlohmann::ordered_json amountJson(double amount);

/// The key of a voucher, with the sign of its kind, to which callers add members:
/// {"voucher":"2013/1/2/5","sign":"付"}.
[[nodiscard]] nlohmann::ordered_json keyJson(const workbench::VoucherKey& key, const workbench::VoucherKinds& kinds);

/// The result of a voucher: {"voucher":"2013/1/2/5","sign":"付","outcome":"stored","rows":2}. A refused voucher has
/// "error", one that was stored although its rows do not match has "mismatch", and one whose rows were removed has
/// their number as "removed".
[[nodiscard]] nlohmann::ordered_json resultJson(const workbench::VoucherResult& result,
                                                const workbench::VoucherKinds& kinds, Language language);

/// A refusal, or another error: {"code":"sums-differ","number":10009,"text":"...","description":"...",
/// "findings":[{"kind":"no-template","line":1,...}]}.
/// The code is the word of the first finding, otherwise that of the error's reason. The text is what people see in the
/// given language, the description that of the error as it was raised; without one it repeats the text. "findings" is
/// left out if there are none.
[[nodiscard]] nlohmann::ordered_json errorJson(const workbench::Refusal& refusal, Language language);

/// The word for a kind of finding, as in the findings of a refusal: "no-template".
[[nodiscard]] const char* findingWord(workbench::Finding::Kind kind) noexcept;

/// Rows in the order of their lines, as an array of objects with their fields by name: null as null, numbers as
/// numbers, dates as "yyyy-mm-dd". Rows from a document look the same. The identities of the rows, "key" and "RowGuid",
/// are random and different each time that the rows are read; they are left out unless asked for.
[[nodiscard]] nlohmann::ordered_json rowsJson(const CashFlowCollection& rows, bool identities);

/// One value: null as null, numbers as numbers, dates as "yyyy-mm-dd", with " hh:mm:ss" if they have a time of day.
[[nodiscard]] nlohmann::ordered_json valueJson(const Variant& value);

/// Adds the verdict on a voucher's rows to its record: "verdict", which is "matched", "nothing", "no-cash" or
/// "refused", and for the last one "error".
void addVerdictJson(nlohmann::ordered_json& json, const workbench::Verdict& verdict, Language language);

/// The word for an outcome in JSON: "stored", "no-cash", "nothing" or "refused".
[[nodiscard]] const char* outcomeWord(workbench::Outcome outcome) noexcept;

} // namespace z7::cashflow::host
