#include "host/text/refusalText.h"

#include "host/text/HostText.h"
#include "host/text/amountText.h"
#include "host/text/reasonText.h"

#include <cmath>

namespace z7::cashflow::host {

using workbench::Finding;
using workbench::ItemOrigin;
using workbench::Refusal;
using workbench::Verdict;

namespace {

using Kind = Finding::Kind;

/// Texts for the findings of one refusal in one language.
class Words {
public:
    explicit Words(Language language) : language_(language) {}

    [[nodiscard]] std::string of(const Finding& finding) const;

private:
    [[nodiscard]] std::string text(HostText text, const std::vector<std::string>& arguments = {}) const {
        return hostText(language_, text, arguments);
    }
    [[nodiscard]] std::string side(bool debit) const {
        const std::string word = text(debit ? HostText::debit : HostText::credit);
        return language_ == Language::english ? std::string(debit ? "debit" : "credit") : word;
    }
    [[nodiscard]] std::string onSide(double amount, bool debit) const {
        return text(HostText::findingAmountWithSide, {amountText(amount), side(debit)});
    }
    // Debit less credit, as an amount with its side; 0 has no side.
    [[nodiscard]] std::string balance(double sum) const {
        return std::abs(sum) < 0.005 ? amountText(0.0) : onSide(std::abs(sum), sum > 0.0);
    }
    [[nodiscard]] std::string sums(const Finding& finding) const;
    [[nodiscard]] std::string origin(const Finding& finding) const;
    // A line in words: its account, its side and the amount there.
    [[nodiscard]] std::string lineText(HostText key, const Finding& finding) const {
        const std::string amount = side(finding.debit) + " " + amountText(finding.amount);
        return text(key, {std::to_string(finding.line), finding.account, amount});
    }

    Language language_;
};

std::string Words::sums(const Finding& finding) const {
    const double difference = finding.voucherSum - finding.rowsSum;
    const bool over =
        finding.rowsSum * finding.voucherSum >= 0.0 && std::abs(finding.rowsSum) > std::abs(finding.voucherSum);
    return text(HostText::findingSums, {balance(finding.voucherSum), balance(finding.rowsSum),
                                        over ? text(HostText::findingSumsOver, {balance(-difference)})
                                             : text(HostText::findingSumsShort, {balance(difference)})});
}

std::string Words::origin(const Finding& finding) const {
    switch (finding.origin) {
    case ItemOrigin::storedRow:
        return text(HostText::findingItemOfRow);
    case ItemOrigin::auxiliaryItem:
        return text(HostText::findingItemAuxiliary);
    case ItemOrigin::line:
        return text(HostText::findingItemOfLine);
    case ItemOrigin::templateOfAccount:
        return text(HostText::findingItemOfTemplate, {finding.account, side(finding.debit)});
    case ItemOrigin::document:
        break;
    }
    return text(HostText::findingItemOfDocument);
}

std::string Words::of(const Finding& finding) const {
    const std::string line = std::to_string(finding.line);
    switch (finding.kind) {
    case Kind::voucherGone:
        return text(HostText::findingVoucherGone);
    case Kind::dateMissing:
        return text(HostText::findingDateMissing);
    case Kind::dateOutside:
        return text(HostText::findingDateOutside, {line, dayText(finding.date), std::to_string(finding.year)});
    case Kind::amountMissing:
        return text(HostText::findingAmountMissing, {line, finding.account, side(finding.debit)});
    case Kind::itemUnknown:
        return text(HostText::findingItemUnknown, {line, finding.item, origin(finding)});
    case Kind::accountUnknown:
        return text(HostText::findingAccountUnknown, {line, finding.account});
    case Kind::rowsNotFound:
        return text(HostText::findingRowsNotFound, {std::to_string(finding.rows)});
    case Kind::sumsDiffer:
        return sums(finding);
    case Kind::noTemplate:
        return lineText(HostText::findingNoTemplate, finding);
    case Kind::lineWithoutRow:
        return lineText(HostText::findingLineWithoutRow, finding);
    case Kind::accountNotInYear:
        return text(HostText::findingAccountNotInYear, {line, finding.account});
    case Kind::accountClosed:
        return text(HostText::findingAccountClosed, {line, finding.account});
    case Kind::accountNotEnd:
        return text(HostText::findingAccountNotEnd, {line, finding.account});
    case Kind::rowWithoutLine:
        return text(HostText::findingRowWithoutLine, {line, finding.account});
    case Kind::rowOnOther:
        return text(HostText::findingRowOnOther, {line, finding.account, finding.otherAccount});
    case Kind::rowsDoubled:
        return text(HostText::findingRowsDoubled, {std::to_string(finding.rows)});
    case Kind::notStoredYet:
        return text(HostText::findingNotStoredYet);
    case Kind::newRowsMatch:
        return text(HostText::findingNewRowsMatch);
    case Kind::heldElsewhere:
        return text(HostText::findingHeldElsewhere);
    case Kind::noRowsDocument:
        return text(HostText::findingNoRowsDocument);
    case Kind::otherVoucher:
        return text(HostText::findingOtherVoucher, {finding.voucher});
    case Kind::lineMissing:
        return text(HostText::findingLineMissing, {line});
    case Kind::amountExceedsLine:
        return lineText(HostText::findingAmountExceedsLine, finding);
    case Kind::restWithoutItem:
        return lineText(HostText::findingRestWithoutItem, finding);
    case Kind::changedSince:
        return text(HostText::findingChangedSince, {std::to_string(finding.run)});
    case Kind::noLedgerVoucher:
        return text(HostText::findingNoLedgerVoucher, {finding.voucher, std::to_string(finding.year)});
    }
    return {};
}

} // namespace

std::string refusalText(Language language, const Refusal& refusal) {
    const Words words(language);
    std::string text;
    for (const Finding& finding : refusal.findings) {
        text += (text.empty() || language == Language::chinese ? "" : " ") + words.of(finding);
    }
    return text.empty() ? reasonText(language, refusal.error) : text;
}

std::string verdictText(Language language, const Verdict& verdict) {
    switch (verdict.kind) {
    case Verdict::Kind::matched:
        return hostText(language, HostText::verdictMatched);
    case Verdict::Kind::nothing:
        return hostText(language, HostText::verdictNothing);
    case Verdict::Kind::noCash:
        return hostText(language, HostText::verdictNoCash);
    case Verdict::Kind::unmatched:
        return hostText(language, HostText::verdictUnmatched, {refusalText(language, *verdict.refusal)});
    case Verdict::Kind::unworkable:
        break;
    }
    return hostText(language, HostText::verdictUnworkable, {refusalText(language, *verdict.refusal)});
}

} // namespace z7::cashflow::host
