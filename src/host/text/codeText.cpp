#include "host/text/codeText.h"

#include "host/text/ChineseReason.h"
#include "host/text/enumWord.h"
#include "workbench/vouchers/databaseFailure.h"

namespace z7::cashflow::host {

namespace {

static_assert(enumName<HostText::fileMissing>() == "fileMissing");

HostText withoutSuggestion(HostText text) noexcept {
    switch (text) {
    case HostText::optionUnknownNear:
        return HostText::optionUnknown;
    case HostText::commandUnknownNear:
        return HostText::commandUnknown;
    case HostText::itemNear:
        return HostText::itemMissing;
    default:
        return text;
    }
}

} // namespace

std::string codeText(HostText text) {
    return wordOf(enumNames<HostText>.at(static_cast<std::size_t>(withoutSuggestion(text))));
}

std::string codeText(ReasonId reason) {
    const ReasonEntry& entry = reason.entry();
    const auto room = roomOf(entry);
    const bool says = room && reason != Reason::none && reason != Reason::verbatim;
    return says ? wordOf(room->names[entry.place]) : std::string();
}

std::string codeText(const Error& error) {
    const std::string code = codeText(error.why().reason);
    return !code.empty()
               ? code
               : codeText(workbench::isDatabaseFailure(error) ? HostText::databaseFailed : HostText::voucherFailed);
}

} // namespace z7::cashflow::host
