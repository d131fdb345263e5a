#pragma once

#include "host/work/Allotment.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace z7::cashflow::host {

/// JSON on one line, with every control character escaped and every byte that is no UTF-8 replaced.
[[nodiscard]] std::string jsonText(const nlohmann::ordered_json& value);

/// A voucher's result: {"voucher":"2013/1/2/5","outcome":"stored","rows":2}; a refused one has "error" with "number" and
/// "description" as well.
[[nodiscard]] nlohmann::ordered_json resultJson(const VoucherResult& result);

/// A refusal: {"number":10009,"description":"..."}, as it was raised.
[[nodiscard]] nlohmann::ordered_json errorJson(const Error& refusal);

/// Rows as an array of objects with all their fields by name: null as null, numbers as numbers, dates as
/// "yyyy-mm-dd"; rows that come from a document are told alike.
[[nodiscard]] nlohmann::ordered_json rowsJson(const CashFlowCollection& rows);

/// The word for an outcome in JSON: "stored", "no-cash", "nothing" or "refused".
[[nodiscard]] const char* outcomeWord(Outcome outcome) noexcept;

} // namespace z7::cashflow::host
