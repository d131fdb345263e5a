#include "workbench/changes/LineSplit.h"

#include <algorithm>

namespace z7::cashflow::workbench {

namespace {

bool isNegative(Amount amount) { return amount.value() < 0.0; }

/// Whether an amount is 0 or has the opposite sign of the line.
bool isAgainst(Amount amount, Amount total) { return amount.isZero() || isNegative(amount) != isNegative(total); }

bool exceeds(Amount amount, Amount limit, Amount total) {
    return isNegative(isNegative(total) ? amount - limit : limit - amount);
}

void addTo(std::vector<ItemPart>& parts, const std::string& item, Amount amount) {
    const auto found =
        std::find_if(parts.begin(), parts.end(), [&item](const ItemPart& part) { return part.item == item; });
    if (found == parts.end()) {
        parts.push_back({item, amount});
    } else {
        found->amount += amount;
    }
}

/// Makes the parts add up to an amount by changing the first ones.
void adjust(std::vector<ItemPart>& parts, Amount amount, Amount total) {
    Amount over = -amount;
    for (const ItemPart& part : parts) {
        over += part.amount;
    }
    if (!over.isZero() && isAgainst(over, total)) {
        parts.front().amount -= over; // the amount exceeds the sum of the parts
        return;
    }
    for (ItemPart& part : parts) {
        const Amount taken = exceeds(over, part.amount, total) ? part.amount : over;
        part.amount -= taken;
        over -= taken;
    }
    parts.erase(std::remove_if(parts.begin(), parts.end(), [](const ItemPart& part) { return part.amount.isZero(); }),
                parts.end());
}

} // namespace

LineSplit splitLine(const std::vector<ItemPart>& former, Amount total, const std::vector<ItemWish>& wishes,
                    const std::string& proposed) {
    LineSplit split;
    split.rest = total;
    for (const ItemWish& wish : wishes) {
        const Amount amount = wish.amount.value_or(split.rest);
        if (isAgainst(amount, total) || exceeds(amount, split.rest, total)) {
            return {LineSplit::Fault::tooMuch, {}, split.rest, 0};
        }
        addTo(split.parts, wish.item, amount);
        split.rest -= amount;
    }
    split.wished = split.parts.size();
    if (split.rest.isZero()) {
        return split;
    }
    const auto isWished = [&split](const std::string& item) {
        return std::any_of(split.parts.begin(), split.parts.end(),
                           [&item](const ItemPart& part) { return part.item == item; });
    };
    std::vector<ItemPart> others;
    for (const ItemPart& part : former) {
        if (!isWished(part.item) && !isAgainst(part.amount, total)) {
            others.push_back(part);
        }
    }
    if (others.empty() && !proposed.empty() && !isWished(proposed)) {
        others.push_back({proposed, split.rest});
    }
    if (others.empty()) {
        return {LineSplit::Fault::noItemLeft, {}, split.rest, 0};
    }
    adjust(others, split.rest, total);
    split.parts.insert(split.parts.end(), others.begin(), others.end());
    return split;
}

} // namespace z7::cashflow::workbench
