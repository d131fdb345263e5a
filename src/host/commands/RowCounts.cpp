#include "host/commands/RowCounts.h"

#include "host/text/HostText.h"

namespace z7::cashflow::host {

using Kind = workbench::RowChange::Kind;

void RowCounts::add(const workbench::VoucherResult& result) {
    for (const Kind kind : {Kind::kept, Kind::added, Kind::changed, Kind::removed}) {
        counts_.at(static_cast<std::size_t>(kind)) += result.count(kind);
    }
}

std::string RowCounts::text(Language language) const {
    constexpr std::array words{HostText::rowKept, HostText::rowNew, HostText::rowChanged, HostText::rowRemoved};
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (counts_.at(i) > 0) {
            text += (text.empty() ? "" : hostText(language, HostText::listSeparator)) +
                    hostText(language, HostText::rowCount,
                             {hostText(language, words.at(i)), std::to_string(counts_.at(i))});
        }
    }
    return text;
}

} // namespace z7::cashflow::host
