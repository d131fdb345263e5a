#include "host/commands/ItemLookup.h"

#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/cli/nearMatch.h"
#include "workbench/lists/accountLists.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t mostNear = 5;

} // namespace

ItemLookup::ItemLookup(Connection& connection) {
    for (workbench::ListedItem& item : workbench::listItems(connection)) {
        items_.emplace(std::move(item.code), std::move(item.name));
    }
}

std::string ItemLookup::codeOf(const std::string& text) const {
    if (items_.contains(text)) {
        return text;
    }
    std::string code;
    for (const auto& [each, name] : items_) {
        if (!text.empty() && foldCase(name) == foldCase(text)) {
            if (!code.empty()) {
                return {};
            }
            code = each;
        }
    }
    return code;
}

std::string ItemLookup::nameOf(const std::string& code) const {
    const auto found = items_.find(code);
    return found == items_.end() ? std::string() : found->second;
}

std::string ItemLookup::nearTo(const std::string& text) const {
    std::vector<std::string> near;
    for (const auto& [code, name] : items_) {
        const bool meant = !text.empty() && (code.starts_with(text) || name.find(text) != std::string::npos ||
                                             !nearMatch(text, {code}).empty());
        if (meant && near.size() < mostNear) {
            near.push_back(code + " " + name);
        }
    }
    std::string list;
    for (const std::string& item : near) {
        list += (list.empty() ? "" : ", ") + item;
    }
    return list;
}

std::string ItemLookup::required(const std::string& text) const {
    std::string code = codeOf(text);
    if (code.empty()) {
        const std::string near = nearTo(text);
        throw near.empty() ? Failure(exit_code::usage, HostText::itemMissing, {text})
                           : Failure(exit_code::usage, HostText::itemNear, {text, near});
    }
    return code;
}

} // namespace z7::cashflow::host
