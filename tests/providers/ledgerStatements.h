#pragma once

#include "z7cashflow/model/CashFlowCollection.h"

#include <cstdint>
#include <string>
#include <vector>

/// The statements that the providers send, by template and arguments, for the voucher with period 1, kind 2 and
/// number 5 in the table gl_accvouch and the year 2013 unless stated otherwise.
namespace z7::cashflow::test::ledger {

[[nodiscard]] std::string option(const std::string& name);
[[nodiscard]] std::string period(const std::string& date = "2013-01-05");
[[nodiscard]] std::string haveCash(const std::string& table = "gl_accvouch", const std::string& year = "2013");
[[nodiscard]] std::string lines(const std::string& table = "gl_accvouch", const std::string& year = "2013",
                                const std::string& number = "5");
[[nodiscard]] std::string keylessLines(const std::string& table);
[[nodiscard]] std::string kind();
[[nodiscard]] std::string storedRows(const std::string& year = "2013");
[[nodiscard]] std::string itemName(const std::string& code);
[[nodiscard]] std::string itemTemplate(const std::string& account, bool bDir, const std::string& year = "2013");
[[nodiscard]] std::string cashSum(const std::string& table = "gl_accvouch", const std::string& year = "2013");
[[nodiscard]] std::string isCash(const std::string& account, const std::string& year = "2013");
[[nodiscard]] std::string voucherDate(const std::string& table = "gl_accvouch");
[[nodiscard]] std::string deleteRows(const std::string& number = "5");
[[nodiscard]] std::string deleteRowsOfFreeNumber(std::int32_t number);
[[nodiscard]] std::string countLines(std::int32_t number);
[[nodiscard]] std::string currencyNames(const std::string& year = "2013");
/// The statement that stores a row of a collection.
[[nodiscard]] std::string insertRow(const CashFlowCollection& collection, std::int32_t index,
                                    const std::string& table = "gl_v_cashtable");

[[nodiscard]] std::string outsideHaveCash(const std::string& table);
[[nodiscard]] std::string outsideKey(const std::string& year = "2013");
[[nodiscard]] std::string outsideLines(const std::string& table);
[[nodiscard]] std::string outsideSum(const std::string& table);

/// Sessions as named in the journal of the scripted database.
[[nodiscard]] inline std::string run(const std::string& text) { return "main: " + text; }
[[nodiscard]] inline std::string open(const std::string& text) { return "main(0,1): " + text; }
[[nodiscard]] inline std::string openStatic(const std::string& text) { return "main(3,-1): " + text; }
[[nodiscard]] inline std::string own(const std::string& text) { return "own(0,1,3): " + text; }

} // namespace z7::cashflow::test::ledger
