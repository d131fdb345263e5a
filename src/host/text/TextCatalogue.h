#pragma once

#include "host/text/Language.h"
#include "z7cashflow/ports/Z7Login.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// One text of the library's catalogue in both languages. Places for arguments are {0}, {1} and so on.
struct ResourceText {
    std::string_view key;
    std::string_view chinese;
    std::string_view english;
};

/// Every resource key of the library, with its texts.
[[nodiscard]] std::span<const ResourceText> resourceTexts() noexcept;

/// The library's texts in one language. An unknown key is an Error that names it.
class CatalogueText final : public TextLookup {
public:
    explicit CatalogueText(Language language) noexcept : language_(language) {}
    [[nodiscard]] std::string Text(const std::string& key) override;

private:
    Language language_;
};

/// The same texts with their places filled.
class CatalogueFormattedText final : public FormattedTextLookup {
public:
    explicit CatalogueFormattedText(Language language) noexcept : text_(language) {}
    [[nodiscard]] std::string Text(const std::string& key, const std::vector<Variant>& arguments) override;

private:
    CatalogueText text_;
};

} // namespace z7::cashflow::host
