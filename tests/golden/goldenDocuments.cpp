// Runs one golden document: golden_documents KIND FILE.xml, where KIND is the folder's name. The result must equal
// FILE.expected byte for byte. See README.md in this folder.

#include "doubles/FakeLogin.h"
#include "doubles/GuidSequence.h"
#include "outside/Company.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error(path.string() + " cannot be read");
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string told(const Error& error) {
    return "error " + std::to_string(error.number()) + " of " + error.source() + ": " + error.description() + "\n";
}

std::string list(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += "  " + line + "\n";
    }
    return text;
}

/// A collection with one row of the voucher 1/2/40000.
std::shared_ptr<CashFlowCollection> collectionWithARow() {
    auto rows = CashFlowCollection::Create();
    rows->UpdateCol(1, 2, 40000, Date(41279.0));
    rows->Add(rows->CreateCFObject());
    return rows;
}

// The document saved after loading, and what that loads and saves to if it differs; or the error, and whether the
// rows are unchanged.
std::string collection(const std::string& document) {
    const auto rows = collectionWithARow();
    const auto old = rows->Item(1);
    try {
        rows->Load(document);
    } catch (const Error& error) {
        const bool kept = rows->Count() == 1 && rows->Item(1) == old;
        return told(error) + (kept ? "the rows stay\n" : "rows left: " + std::to_string(rows->Count()) + "\n");
    }
    const std::string saved = rows->Save();
    const auto again = collectionWithARow();
    again->Load(saved);
    if (again->Save() != saved) {
        return saved + "\n--- loaded and saved again\n" + again->Save();
    }
    return saved;
}

std::string rowsOf(const std::string& xml) {
    const auto rows = CashFlowCollection::Create();
    rows->Load(xml);
    std::string text;
    for (const auto& row : *rows) {
        const auto field = [&](const char* name) { return toTextOrEmpty(row->Item(name)); };
        text += "  line " + field("inid") + " account " + field("ccode") + " item " + field("cCashItem") + " " +
                field("md") + " " + field("mc") + "\n";
    }
    return text;
}

/// The table created for a voucher, with its lines.
std::string tableOf(Company& company, const std::string& document, bool blnReCreate) {
    std::string text = std::string("blnReCreate ") + (blnReCreate ? "true" : "false") + "\n";
    std::uint8_t iPeriod = 0;
    std::int16_t iSignSeq = 0;
    std::int32_t iNo_id = 0;
    Date dbill_date = Date::none();
    std::string coutNo_id;
    try {
        const std::string table = DataProvider().VoucherXmlToDB(company.connection(), document, iPeriod, iSignSeq,
                                                                iNo_id, dbill_date, coutNo_id, blnReCreate);
        text += "  table " + table + "\n";
        if (table != "gl_v_accvouch") {
            text += list(company.records("select * from " + table));
            company.execute("drop table " + table);
        }
    } catch (const Error& error) {
        text += "  " + told(error);
    }
    return text + "  key " + std::to_string(iPeriod) + "/" + std::to_string(iSignSeq) + "/" + std::to_string(iNo_id) +
           " of " + dateText(dbill_date) + ", outside key \"" + coutNo_id + "\"\n";
}

std::string voucher(const std::string& document) {
    Company company;
    std::string text = tableOf(company, document, false);
    text += tableOf(company, document, true);
    VoucherProvider provider;
    for (const bool blnCreateCF : {false, true}) {
        text += blnCreateCF ? "rows generated\n" : "rows stored\n";
        try {
            text += rowsOf(provider.out().GetCashFlowColFromXml(company.connection(), document, blnCreateCF));
        } catch (const Error& error) {
            text += "  " + told(error);
        }
    }
    return text + "tables left in tempdb: " + std::to_string(company.temporaryTables()) + "\n";
}

std::string storedRows(Company& company) {
    return "gl_cashtable\n" + list(company.records("select * from gl_cashtable order by iNo_id,inid,RowGuid"));
}

/// Stores a row for the voucher 1/SIGN/NUMBER before the save.
void storeRow(Company& company, const std::string& voucher) {
    company.execute("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,iNo_id,csign,inid,cCashItem,ccode,mc) "
                    "values(N'before',2013,1," +
                    voucher + ",N'x',2,N'02',N'6001',1)");
}

std::string glSave(const std::string& document) {
    Company company;
    company.setOption("bXJLL", "true");
    storeRow(company, "2,5");
    std::string xml = document;
    std::string text;
    try {
        bool blnCheckCF = false;
        VoucherProvider().gl().SaveCashFlowColFromXml(company.connection(), "gl_accvouch", 1, 2, 5, &xml, &blnCheckCF);
        text = std::string("saved, sums compared: ") + (blnCheckCF ? "yes" : "no") + "\n";
    } catch (const Error& error) {
        text = told(error);
    }
    return text + storedRows(company);
}

std::string outsideSave(const std::string& document) {
    Company company;
    storeRow(company, "1,6");
    std::string xml = document;
    std::string text;
    try {
        VoucherProvider().out().SaveCashFlowCol(company.connection(), "GL_accvouch", "OUT", &xml);
        text = "saved\n";
    } catch (const Error& error) {
        text = told(error);
    }
    return text + storedRows(company);
}

int run(const std::string& kind, const fs::path& file) {
    static const std::map<std::string, std::function<std::string(const std::string&)>> kinds{
        {"collection", collection}, {"voucher", voucher}, {"gl_save", glSave}, {"outside_save", outsideSave}};
    const auto found = kinds.find(kind);
    if (found == kinds.end()) {
        throw std::runtime_error("no kind of golden document: " + kind);
    }
    const GuidSequence guids;
    modPublic::SetLogin(std::make_shared<FakeLogin>());
    modPublic::context().guidSource = guids.source();
    const std::string actual = found->second(contentOf(file));

    const fs::path expectation = fs::path(file).replace_extension(".expected");
    const char* renew = std::getenv("Z7_RENEW_GOLDEN");
    if (renew != nullptr && std::string(renew) == "1") {
        std::ofstream(expectation, std::ios::binary) << actual;
        std::cout << expectation.string() << " was written anew\n";
        return 0;
    }
    if (contentOf(expectation) == actual) {
        return 0;
    }
    std::cerr << "--- expected (" << expectation.filename().string() << ")\n"
              << contentOf(expectation) << "\n+++ actual\n"
              << actual << "\n";
    return 1;
}

} // namespace
} // namespace z7::cashflow::test

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: golden_documents KIND FILE.xml\n";
        return 2;
    }
    try {
        return z7::cashflow::test::run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
