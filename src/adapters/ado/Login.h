#pragma once

#include "adapters/ado/automation/Dispatch.h"
#include "z7cashflow/ports/Z7Login.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow::ado {

/// The host's login object, used by the member names in hostNames.h. Every member is read when it is asked for. Each
/// failure of the host's objects is an Error: their own, 438 for a member that is missing, 13 for a value that is not
/// what the member must return. It is used on the thread that it was made on.
class Login final : public Z7Login {
public:
    /// Error 91 for nothing.
    explicit Login(adapters::automation::Dispatch login);

    std::int32_t LocaleId() override;
    std::string accountId() override;
    std::string accountingYear() override;
    std::string userId() override;
    std::string operatorName() override;
    std::string ConnectionString() override;
    Variant information(std::int32_t code) override;
    std::string languageTag() override;
    std::shared_ptr<cashflow::TextLookup> TextLookup() override;
    std::shared_ptr<cashflow::FormattedTextLookup> FormattedTextLookup() override;

    /// The host's object, for a host that asks for the login that it has set.
    [[nodiscard]] const adapters::automation::Dispatch& object() const noexcept { return object_; }

private:
    [[nodiscard]] std::string text(const wchar_t* member) const;

    adapters::automation::Dispatch object_;
};

} // namespace z7::cashflow::ado
