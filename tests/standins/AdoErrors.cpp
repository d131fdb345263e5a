#include "standins/AdoErrors.h"

#include <array>
#include <utility>

#include <algorithm>

namespace z7::cashflow::test {

namespace {

constexpr IID errorsKind{0x5a370001, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};
constexpr IID errorKind{0x5a370002, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};

class AdoError final : public AutomationObject {
public:
    AdoError(std::shared_ptr<CallPlan> plan, const AdoErrorEntry& entry)
        : AutomationObject(std::move(plan), errorKind) {
        property(L"Number", [entry](const Call&) { return OwnedVariant(entry.number); });
        property(L"NativeError",
                 [entry](const Call&) { return OwnedVariant(static_cast<std::int32_t>(entry.error.nativeError())); });
        property(L"SQLState", [entry](const Call&) { return OwnedVariant(entry.error.sqlState()); });
        property(L"Source", [entry](const Call&) { return OwnedVariant(entry.error.source()); });
        property(L"Description", [entry](const Call&) { return OwnedVariant(entry.error.description()); });
        defaultMember(L"Description");
    }
};

} // namespace

AdoErrors::AdoErrors(std::shared_ptr<CallPlan> plan, std::vector<AdoErrorEntry> entries)
    : AutomationObject(std::move(plan), errorsKind), entries_(std::move(entries)) {
    property(L"Count", [this](const Call&) { return OwnedVariant(static_cast<std::int32_t>(entries_.size())); });
    property(L"Item", [this](const Call& call) {
        const auto position = static_cast<std::size_t>(call.number(0));
        if (position >= entries_.size()) {
            throw Error(errors::unknownField, "ADODB.Errors", "Item cannot be found");
        }
        return asValue(makeObject<AdoError>(this->plan(), entries_[position]));
    });
    defaultMember(L"Item");
}

bool isErrorOfAdo(const Error& error) {
    constexpr std::array numbers{errors::invalidArgument,
                                 errors::noCurrentRecord,
                                 errors::notUpdatable,
                                 errors::unknownField,
                                 errors::objectClosed,
                                 errors::objectOpen,
                                 errors::noConnection,
                                 3219,
                                 3421};
    return std::find(numbers.begin(), numbers.end(), error.number()) != numbers.end();
}

} // namespace z7::cashflow::test
