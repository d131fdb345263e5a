// Rows as XML: saving 10,000 rows, compared with a loop that appends the same bytes, and loading that document,
// compared with the bare parse.

#include "Measure.h"

#include "z7cashflow/model/CashFlowCollection.h"

#include <libxml/parser.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace z7::cashflow;

constexpr int turns = 11;

std::shared_ptr<CashFlowCollection> makeRows(std::int32_t count) {
    auto collection = CashFlowCollection::Create();
    collection->UpdateCol(3, 2, 7, Date::fromCivil(2024, 3, 15));
    for (std::int32_t line = 1; line <= count; ++line) {
        const auto row = collection->CreateCFObject();
        row->SetValue("iYear", std::int16_t{2024});
        row->SetValue("csign", "付");
        row->SetValue("inid", static_cast<std::int16_t>(line % 30'000));
        row->SetValue("cCashItem", "0203");
        row->SetValue("cCashItemName", "Taxes & 'fees' paid");
        row->SetValue("md", 0.0);
        row->SetValue("mc", line / 4.0);
        row->SetValue("ccode", "222101");
        row->SetValue("ccode_name", "应交税费-应交增值税");
        row->SetValue("cdept_id", "02");
        collection->Add(row);
    }
    return collection;
}

// The pieces from which a document of rows is assembled, in their order.
std::vector<std::string> piecesOf(const std::string& document) {
    std::vector<std::string> pieces;
    std::size_t from = 0;
    while (from < document.size()) {
        const std::size_t to = std::min(document.find_first_of(" '", from + 1), document.size());
        pieces.push_back(document.substr(from, to - from));
        from = to;
    }
    return pieces;
}

void benchSave(const CashFlowCollection& collection) {
    const std::string document = collection.Save();
    const auto pieces = piecesOf(document);
    const auto result = bench::compare(
        turns, [&] { return bench::seconds([&] { bench::require(collection.Save() == document, "the saved text"); }); },
        [&] {
            return bench::seconds([&] {
                std::string text;
                for (const std::string& piece : pieces) {
                    text += piece;
                }
                bench::require(text == document, "the appended text");
            });
        });
    std::printf("Save of %d rows: %.2f us/row, appending the same bytes %.2f us/row, ratio %.2f (aim: at most 2)\n",
                collection.Count(), result.own / collection.Count() * 1e6, result.floor / collection.Count() * 1e6,
                result.ratio);
}

void benchLoad(const CashFlowCollection& collection) {
    const std::string document = collection.Save();
    const auto result = bench::compare(
        turns,
        [&] {
            const auto loaded = CashFlowCollection::Create();
            const double time = bench::seconds([&] { loaded->Load(document); });
            bench::require(loaded->Count() == collection.Count(), "the number of rows loaded");
            return time;
        },
        [&] {
            return bench::seconds([&] {
                xmlDoc* parsed = xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, "UTF-8",
                                               XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_HUGE);
                bench::require(parsed != nullptr, "the bare parse");
                xmlFreeDoc(parsed);
            });
        });
    std::printf("Load of %d rows: %.2f us/row, bare parse %.2f us/row, ratio %.2f (aim: at most 1.5)\n",
                collection.Count(), result.own / collection.Count() * 1e6, result.floor / collection.Count() * 1e6,
                result.ratio);
}

} // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    for (const std::int32_t count : {1'000, 10'000, 30'000}) {
        const auto collection = makeRows(count);
        benchSave(*collection);
        benchLoad(*collection);
    }
    return 0;
}
