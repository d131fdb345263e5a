#include "workbench/open/OpenSummary.h"

#include <algorithm>
#include <set>

namespace z7::cashflow::workbench {

namespace {

using Kind = Finding::Kind;

Amount positive(double amount) { return Amount::of(amount < 0.0 ? -amount : amount); }

/// Whether a finding refers to one side of an account.
bool hasSide(Kind kind) {
    return kind == Kind::noTemplate || kind == Kind::lineWithoutRow || kind == Kind::amountMissing;
}

bool hasAccount(Kind kind) {
    return hasSide(kind) || kind == Kind::accountUnknown || kind == Kind::accountNotInYear ||
           kind == Kind::accountClosed || kind == Kind::accountNotEnd;
}

OpenGroup groupOf(const Finding& finding) {
    OpenGroup group;
    group.kind = finding.kind;
    group.account = hasAccount(finding.kind) ? finding.account : std::string();
    group.debit = hasSide(finding.kind) ? std::optional(finding.debit) : std::nullopt;
    group.item = finding.kind == Kind::itemUnknown ? finding.item : std::string();
    return group;
}

} // namespace

void OpenSummary::add(const VoucherKey& key, const Refusal& refusal) {
    ++vouchers_;
    Amount unallocated;
    std::vector<const Finding*> lacking;
    for (const Finding& finding : refusal.findings) {
        if (finding.kind == Kind::sumsDiffer) {
            unallocated = positive(finding.voucherSum - finding.rowsSum);
        } else {
            lacking.push_back(&finding);
        }
    }
    if (lacking.empty() && !refusal.findings.empty()) {
        lacking.push_back(&refusal.findings.front()); // only the difference of the sums is known
    }
    std::set<Key> counted;
    const auto count = [&](OpenGroup group, Amount amount) {
        const Key groupKey{group.kind ? static_cast<int>(*group.kind) : -1, group.number, group.account,
                           group.debit ? (*group.debit ? 1 : 0) : -1, group.item};
        group.first = key;
        OpenGroup& known = groups_.try_emplace(groupKey, std::move(group)).first->second;
        known.amount += amount;
        known.vouchers += counted.insert(groupKey).second ? 1 : 0;
    };
    for (const Finding* finding : lacking) {
        const bool ofLine = hasAccount(finding->kind) || finding->kind == Kind::itemUnknown;
        count(groupOf(*finding), ofLine ? positive(finding->amount) : unallocated);
    }
    if (lacking.empty()) {
        OpenGroup group;
        group.number = refusal.error.number();
        count(std::move(group), unallocated);
    }
}

std::vector<OpenGroup> OpenSummary::groups() const {
    std::vector<OpenGroup> groups;
    groups.reserve(groups_.size());
    for (const auto& [key, group] : groups_) {
        groups.push_back(group);
    }
    return groups;
}

} // namespace z7::cashflow::workbench
