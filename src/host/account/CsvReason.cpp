#include "host/account/CsvReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::host {
namespace {

using R = CsvReason;

constexpr std::array table{
    ReasonEntry{R::utf16, errors::badArgument, "the file looks like UTF-16; save it as CSV UTF-8"},
    ReasonEntry{R::gb18030, errors::badArgument, "the file looks like GB18030 (GBK); save it as CSV UTF-8"},
    ReasonEntry{R::spreadsheet, errors::badArgument, "the file is a spreadsheet document; save it as CSV UTF-8"},
    ReasonEntry{R::invalidUtf8, errors::badArgument, "the text is not valid UTF-8; save the file as CSV UTF-8"},
    ReasonEntry{R::zeroByte, errors::badArgument, "there is a zero byte"},
    ReasonEntry{R::strayQuote, errors::badArgument,
                "a quote in an unquoted field; quote the whole field and double the quotes in it"},
    ReasonEntry{R::unclosedQuote, errors::badArgument, "a quoted field is not closed"},
    ReasonEntry{R::recordTooLong, errors::badArgument, "the record is longer than 16 MiB"},
    ReasonEntry{R::unreadable, errors::badArgument, "reading fails"},
    ReasonEntry{R::outOfMemory, errors::outOfMemory, "out of memory"},
};

static_assert(isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> csvReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::cashflow::host
