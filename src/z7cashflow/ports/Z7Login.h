#pragma once

#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The host's catalogue of texts in the user's language.
class TextLookup {
public:
    virtual ~TextLookup() = default;
    /// The text of a resource key such as "Z7.CW.GL.CashFlow.00017". May raise an Error for an unknown key.
    [[nodiscard]] virtual std::string text(const std::string& key) = 0;
};

/// The same catalogue for texts that take arguments.
class FormattedTextLookup {
public:
    virtual ~FormattedTextLookup() = default;
    /// The text of a resource key with its places filled from the arguments. May raise an Error for an unknown key.
    [[nodiscard]] virtual std::string text(const std::string& key, const std::vector<Variant>& arguments) = 0;
};

/// The user's login to the host, made by the host and shared with the library, which only reads it.
class Z7Login {
public:
    virtual ~Z7Login() = default;

    /// Locale identifier of the user's language, such as 2052.
    [[nodiscard]] virtual std::int32_t LocaleId() = 0;
    /// Identifier of the account (the company's set of books), such as "001".
    [[nodiscard]] virtual std::string accountId() = 0;
    /// The accounting year that the user logged in to, as digits: "2013".
    [[nodiscard]] virtual std::string accountingYear() = 0;
    /// Identifier of the user, by which drafts are kept.
    [[nodiscard]] virtual std::string userId() = 0;
    /// Name of the operator, by which voucher options are kept.
    [[nodiscard]] virtual std::string operatorName() = 0;
    /// Connection string of the account's database.
    [[nodiscard]] virtual std::string ConnectionString() = 0;
    /// A piece of account information by its number; null if the host does not have it. The library asks for 117, the
    /// name of the account's accounting system; with "政府会计制度" it leaves out budget accounts.
    [[nodiscard]] virtual Variant information(std::int32_t code) = 0;
    /// Tag of the user's language, such as "zh-CN".
    [[nodiscard]] virtual std::string languageTag() = 0;
    /// The catalogue for texts without arguments. The library shares it as long as the login is set.
    [[nodiscard]] virtual std::shared_ptr<cashflow::TextLookup> TextLookup() = 0;
    /// The catalogue for texts with arguments, shared likewise.
    [[nodiscard]] virtual std::shared_ptr<cashflow::FormattedTextLookup> FormattedTextLookup() = 0;
    /// Whether the library is to refuse a value that could change the statement that it goes into, with error 10020 and
    /// before the statement is run: a text with a quote, a number that is not one number, a table name that is not a
    /// name. Values are never escaped, so a host that does not check them itself returns true. The default is
    /// false.
    [[nodiscard]] virtual bool guardsStatements() { return false; }
};

} // namespace z7::cashflow

Z7_PUBLIC_END
