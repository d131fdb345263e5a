#pragma once

#include "texts/Language.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/visibility.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::texts {

/// One text of the library in both languages. Places for arguments are {0}, {1} and so on. docs/texts.md says where
/// the library uses each, and why some begin or end with a blank.
struct ResourceText {
    std::string_view key;     ///< resource key, such as "Z7.CW.GL.CashFlow.00017"
    std::string_view chinese; ///< the Chinese text, in UTF-8
    std::string_view english; ///< the English text
};

/// Every key of the library, once, with its texts.
[[nodiscard]] std::span<const ResourceText> resourceTexts() noexcept;

/// The library's texts in one language, for Z7Login::TextLookup. Keys are case-sensitive. An unknown key raises an
/// Error with the reason textKeyUnknown, which names the key.
class CatalogueText final : public TextLookup {
public:
    /// The catalogue in a language.
    explicit CatalogueText(Language language) noexcept : language_(language) {}
    [[nodiscard]] std::string text(const std::string& key) override;

private:
    Language language_;
};

/// The same texts with their places filled, for Z7Login::FormattedTextLookup. An argument is written as in a
/// statement; null and empty arguments become the empty text.
class CatalogueFormattedText final : public FormattedTextLookup {
public:
    /// The catalogue in a language.
    explicit CatalogueFormattedText(Language language) noexcept : text_(language) {}
    [[nodiscard]] std::string text(const std::string& key, const std::vector<Variant>& arguments) override;

private:
    CatalogueText text_;
};

} // namespace z7::cashflow::texts

Z7_PUBLIC_END
