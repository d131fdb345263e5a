// What a host does first: it sets its login, creates a collection with one row, and requests both text forms.

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace cf = z7::cashflow;

class Texts final : public cf::TextLookup, public cf::FormattedTextLookup {
public:
    std::string text(const std::string& key) override { return key; }
    std::string text(const std::string& key, const std::vector<cf::Variant>&) override { return key; }
};

class Login final : public cf::Z7Login {
public:
    std::int32_t LocaleId() override { return 1033; }
    std::string accountId() override { return "001"; }
    std::string accountingYear() override { return "2013"; }
    std::string userId() override { return "demo"; }
    std::string operatorName() override { return "demo"; }
    std::string ConnectionString() override { return {}; }
    cf::Variant information(std::int32_t) override { return {}; }
    std::string languageTag() override { return "en"; }
    std::shared_ptr<cf::TextLookup> TextLookup() override { return texts_; }
    std::shared_ptr<cf::FormattedTextLookup> FormattedTextLookup() override { return texts_; }

private:
    std::shared_ptr<Texts> texts_ = std::make_shared<Texts>();
};

bool holds(const std::string& what, bool truth) {
    if (!truth) {
        std::cerr << "does not hold: " << what << '\n';
    }
    return truth;
}

} // namespace

int main() {
    cf::modPublic::SetLogin(std::make_shared<Login>());
    cf::VoucherProvider provider;
    const auto collection = provider.CreateCashFlowCollection();
    const auto row = collection->CreateCFObject();
    row->SetValue("ccode", cf::Variant(std::string("1002")));
    collection->Add(row);

    bool all = holds("the year is the login's", cf::modPublic::GetIYear() == 2013);
    all &= holds("the row is in the collection", collection->Count() == 1);
    all &= holds("the row knows its collection", row->objParent() == collection);
    const std::string statement = row->InsertSql("gl_cashtable", collection->CFStruct());
    all &= holds("the statement holds the account", statement.find("N'1002'") != std::string::npos);
    all &= holds("the document holds the account", collection->Save().find("ccode=\"1002\"") != std::string::npos ||
                                                       collection->Save().find("ccode='1002'") != std::string::npos);
    return all ? 0 : 1;
}
