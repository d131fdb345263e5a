#pragma once

#include "host/cli/GlobalOptions.h"
#include "z7cashflow/ports/Z7Login.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow::host {

/// The login of the command line: the user, the account, the accounting year and the language.
class HostLogin final : public Z7Login {
public:
    /// The year is that of the command; the connection string is that of the opened database.
    HostLogin(GlobalOptions options, std::int16_t year, std::string connectionString);

    [[nodiscard]] std::int32_t LocaleId() override;
    [[nodiscard]] std::string accountId() override;
    [[nodiscard]] std::string accountingYear() override;
    [[nodiscard]] std::string userId() override;
    [[nodiscard]] std::string operatorName() override;
    [[nodiscard]] std::string ConnectionString() override;
    /// Code 117 returns the accounting system of the settings, empty if there is none; any other code returns
    /// null.
    [[nodiscard]] Variant information(std::int32_t code) override;
    [[nodiscard]] std::string languageTag() override;
    [[nodiscard]] std::shared_ptr<cashflow::TextLookup> TextLookup() override;
    [[nodiscard]] std::shared_ptr<cashflow::FormattedTextLookup> FormattedTextLookup() override;
    /// True unless the settings turn it off.
    [[nodiscard]] bool guardsStatements() override;

private:
    GlobalOptions options_;
    std::int16_t year_;
    std::string connectionString_;
    std::shared_ptr<cashflow::TextLookup> text_;
    std::shared_ptr<cashflow::FormattedTextLookup> formattedText_;
};

} // namespace z7::cashflow::host
