#include "host/work/HostLogin.h"

#include "texts/CatalogueText.h"

namespace z7::cashflow::host {

namespace {

constexpr std::int32_t accountingSystemCode = 117;

} // namespace

HostLogin::HostLogin(GlobalOptions options, std::int16_t year, std::string connectionString)
    : options_(std::move(options)), year_(year), connectionString_(std::move(connectionString)),
      text_(std::make_shared<texts::CatalogueText>(options_.language)),
      formattedText_(std::make_shared<texts::CatalogueFormattedText>(options_.language)) {}

std::int32_t HostLogin::LocaleId() { return texts::localeId(options_.language); }

std::string HostLogin::accountId() { return options_.account; }

std::string HostLogin::accountingYear() { return std::to_string(year_); }

std::string HostLogin::userId() { return options_.user; }

std::string HostLogin::operatorName() { return options_.operatorName; }

std::string HostLogin::ConnectionString() { return connectionString_; }

Variant HostLogin::information(std::int32_t code) {
    return code == accountingSystemCode ? Variant(options_.accountingSystem) : Variant();
}

std::string HostLogin::languageTag() { return texts::languageTag(options_.language); }

std::shared_ptr<cashflow::TextLookup> HostLogin::TextLookup() { return text_; }

std::shared_ptr<cashflow::FormattedTextLookup> HostLogin::FormattedTextLookup() { return formattedText_; }

bool HostLogin::guardsStatements() { return options_.guard; }

} // namespace z7::cashflow::host
