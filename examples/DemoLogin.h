#pragma once

#include "texts/CatalogueText.h"
#include "z7cashflow/ports/Z7Login.h"

#include <memory>
#include <string>

/// The login of the examples: the user "demo" in one account and one accounting year, with texts in English.
class DemoLogin final : public z7::cashflow::Z7Login {
public:
    DemoLogin(std::string year, std::string connectionString)
        : year_(std::move(year)), connectionString_(std::move(connectionString)) {}

    std::int32_t LocaleId() override { return 1033; }
    std::string languageTag() override { return "en-US"; }
    std::string accountId() override { return "001"; }
    std::string accountingYear() override { return year_; }
    std::string userId() override { return "demo"; }
    std::string operatorName() override { return "demo"; }
    std::string ConnectionString() override { return connectionString_; }
    z7::cashflow::Variant information(std::int32_t) override { return {}; }
    std::shared_ptr<z7::cashflow::TextLookup> TextLookup() override { return text_; }
    std::shared_ptr<z7::cashflow::FormattedTextLookup> FormattedTextLookup() override { return formattedText_; }
    /// The library does not escape values, so a host that does not check them itself switches the guard on.
    bool guardsStatements() override { return true; }

private:
    std::string year_;
    std::string connectionString_;
    std::shared_ptr<z7::cashflow::TextLookup> text_ =
        std::make_shared<z7::cashflow::texts::CatalogueText>(z7::cashflow::texts::Language::english);
    std::shared_ptr<z7::cashflow::FormattedTextLookup> formattedText_ =
        std::make_shared<z7::cashflow::texts::CatalogueFormattedText>(z7::cashflow::texts::Language::english);
};
