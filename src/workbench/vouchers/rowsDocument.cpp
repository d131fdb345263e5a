#include "workbench/vouchers/rowsDocument.h"

#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::workbench {

namespace {

/// The voucher key in a document; -1 for a part that it does not contain.
struct NamedKey {
    std::int64_t year = -1;
    std::int64_t period = -1;
    std::int64_t kind = -1;
    std::int64_t number = -1;

    [[nodiscard]] bool isOther(const VoucherKey& key) const {
        const auto differs = [](std::int64_t named, std::int64_t own) { return named != -1 && named != own; };
        return differs(year, key.year) || differs(period, key.period) || differs(kind, key.kind) ||
               differs(number, key.number);
    }
    [[nodiscard]] std::string text() const {
        const auto part = [](std::int64_t named) { return named == -1 ? std::string("?") : std::to_string(named); };
        return part(year) + "/" + part(period) + "/" + part(kind) + "/" + part(number);
    }
};

// A missing, empty or 0 attribute names no voucher: rows that do not belong to a voucher yet are written that way.
NamedKey namedBy(const XmlNode& element, const char* period, const char* kind, const char* number) {
    const auto numberOf = [&element](const char* name) -> std::int64_t {
        const auto text = element.attribute(name);
        const double value = text ? leadingNumber(*text) : 0.0;
        return value <= 0.0 || value > 2147483647.0 ? -1 : static_cast<std::int64_t>(value);
    };
    return {numberOf("iYear"), numberOf(period), numberOf(kind), numberOf(number)};
}

Refusal foreign(Finding::Kind kind, const std::string& voucher = {}) {
    Finding finding;
    finding.kind = kind;
    finding.voucher = voucher;
    return ownRefusal(errors::foreignDocument, {finding});
}

} // namespace

std::shared_ptr<CashFlowCollection> rowsOfDocument(const std::string& document) {
    auto rows = CashFlowCollection::Create();
    if (!document.empty()) {
        rows->Load(XmlSource(document));
    }
    return rows;
}

std::optional<Refusal> foreignRows(const std::string& document, const VoucherKey& key, bool force) {
    const auto parsed = XmlDocument::load(document);
    if (!parsed || parsed->documentElement().baseName() != "root" ||
        parsed->documentElement().selectNodes("rows").empty()) {
        return foreign(Finding::Kind::noRowsDocument);
    }
    if (force) {
        return std::nullopt;
    }
    const XmlNode root = parsed->documentElement();
    const NamedKey ofRoot = namedBy(root, "iperiod", "isignseq", "ino_id");
    if (ofRoot.isOther(key)) {
        return foreign(Finding::Kind::otherVoucher, ofRoot.text());
    }
    for (const XmlNode& row : root.selectNodes("rows/row")) {
        const NamedKey ofRow = namedBy(row, "iPeriod", "iSignSeq", "iNo_id");
        if (ofRow.isOther(key)) {
            return foreign(Finding::Kind::otherVoucher, ofRow.text());
        }
    }
    return std::nullopt;
}

} // namespace z7::cashflow::workbench
