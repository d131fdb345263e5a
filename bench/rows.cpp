// Creating, filling and reading 100,000 rows: time and bytes per row.

#include "Measure.h"

#include "z7cashflow/model/CashFlowCollection.h"

#include <malloc.h>

#include <cstdint>
#include <memory>

namespace {

using namespace z7::cashflow;

constexpr std::int32_t rowCount = 100'000;

std::shared_ptr<CashFlowCollection> fill() {
    auto collection = CashFlowCollection::Create();
    collection->UpdateCol(3, 2, 7, Date::fromCivil(2024, 3, 15));
    for (std::int32_t line = 1; line <= rowCount; ++line) {
        const auto row = collection->CreateCFObject();
        row->SetValue("iYear", std::int16_t{2024});
        row->SetValue("csign", "付");
        row->SetValue("inid", static_cast<std::int16_t>(line % 30'000));
        row->SetValue("cCashItem", "0203");
        row->SetValue("cCashItemName", "支付的各项税费");
        row->SetValue("md", 0.0);
        row->SetValue("mc", line / 4.0);
        row->SetValue("ccode", "222101");
        row->SetValue("ccode_name", "应交税费-应交增值税");
        for (const char* amount : {"md_f", "mc_f", "nd_s", "nc_s"}) {
            row->SetValue(amount, 0.0);
        }
        row->SetValue("cdept_id", "02");
        row->SetValue("cperson_id", "0007");
        collection->Add(row);
    }
    return collection;
}

double readAll(const CashFlowCollection& collection) {
    double sum = 0.0;
    std::size_t characters = 0;
    for (const auto& row : collection) {
        for (const std::string& name : row->Fields()) {
            const Variant& value = row->Item(name);
            if (const auto* number = value.get<double>()) {
                sum += *number;
            } else if (const auto* text = value.get<std::string>()) {
                characters += text->size();
            }
        }
    }
    bench::require(characters > 0, "the rows' texts");
    return sum;
}

} // namespace

int main() {
    std::vector<double> fills;
    std::vector<double> reads;
    double bytes = 0.0;
    for (int turn = 0; turn < 5; ++turn) {
        const std::size_t before = mallinfo2().uordblks;
        std::shared_ptr<CashFlowCollection> collection;
        fills.push_back(bench::seconds([&] { collection = fill(); }));
        bytes = static_cast<double>(mallinfo2().uordblks - before) / rowCount;
        double sum = 0.0;
        reads.push_back(bench::seconds([&] { sum = readAll(*collection); }));
        bench::require(collection->Count() == rowCount, "the number of rows");
        bench::require(sum == rowCount / 4.0 * (rowCount + 1) / 2.0, "the sum of the amounts");
    }
    std::printf(
        "rows: make and fill %.2f us/row, read all fields %.2f us/row, %.0f bytes/row (%.2f KiB; aim: at most 2.5)\n",
        bench::median(fills) / rowCount * 1e6, bench::median(reads) / rowCount * 1e6, bytes, bytes / 1024);
    return 0;
}
