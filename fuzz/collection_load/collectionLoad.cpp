// Collection XML: Save returns what Load accepted, and refused text leaves the rows unchanged.

#include "doubles/FakeLogin.h"
#include "fuzz/target.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow::fuzz {
namespace {

using Collection = std::shared_ptr<CashFlowCollection>;

// The document writes white space in a value unchanged, and a reader turns each such character, and each line break
// of two, into one blank.
std::string readBack(const std::string& text) {
    std::string blanks;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool lineBreak = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        at += lineBreak ? 1 : 0;
        blanks += text[at] == '\t' || text[at] == '\r' || text[at] == '\n' ? ' ' : text[at];
    }
    return blanks;
}

// A field of this name, from an attribute such as p:xmlns, becomes a declaration when it is written without its
// prefix.
bool declaresNamespace(const CashFlowCollection& rows) {
    return std::any_of(rows.begin(), rows.end(), [](const auto& row) {
        const auto& names = row->Fields();
        return std::find(names.begin(), names.end(), "xmlns") != names.end();
    });
}

void requireSameRows(const CashFlowCollection& before, const CashFlowCollection& after) {
    require(before.Count() == after.Count(), "a saved document has as many rows");
    for (std::int32_t i = 1; i <= before.Count(); ++i) {
        const auto from = before.Item(i);
        const auto to = after.Item(i);
        require(from->Fields() == to->Fields(), "a saved row has the same fields");
        for (const std::string& name : from->Fields()) {
            require(toTextOrEmpty(to->Item(name)) == readBack(toTextOrEmpty(from->Item(name))),
                    "a saved field has the same text");
        }
    }
}

void requireRoundTrip(const CashFlowCollection& loaded) {
    const std::string saved = loaded.Save();
    const Collection second = CashFlowCollection::Create();
    second->Load(saved);
    requireSameRows(loaded, *second);
    const std::string again = second->Save();
    const Collection third = CashFlowCollection::Create();
    third->Load(again);
    require(third->Save() == again, "save, load, save gives the same bytes");
}

void run(const std::string& text) {
    modPublic::SetLogin(std::make_shared<test::FakeLogin>());
    const Collection rows = CashFlowCollection::Create();
    const auto old = rows->CreateCFObject();
    rows->Add(old);
    try {
        rows->Load(text);
    } catch (const Error& error) {
        require(error.number() == errors::badCollectionXml || error.number() == errors::keyExists,
                "Load fails with error 1002, or with 457 for two attributes of one base name");
        require(error.number() == errors::keyExists || (rows->Count() == 1 && rows->Item(1) == old),
                "refused text leaves the rows");
        return;
    }
    require(old->objParent() == rows, "a row that gives way keeps its collection");
    for (const auto& row : *rows) {
        require(row->objParent() == rows && rows->Item(row->key()) == row, "each row is found by its key");
    }
    if (!declaresNamespace(*rows)) {
        requireRoundTrip(*rows);
    }
}

} // namespace
} // namespace z7::cashflow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    z7::cashflow::fuzz::run(std::string(z7::cashflow::fuzz::textOf(data, size)));
    return 0;
}
