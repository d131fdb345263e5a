#pragma once

#include "host/Language.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// The texts of the command line itself. What each says stands beside it in HostText.cpp.
enum class HostText {
    // headings and words
    voucher,
    date,
    summary,
    cashSum,
    needed,
    stored,
    meets,
    line,
    account,
    accountName,
    debit,
    credit,
    item,
    itemName,
    error,
    message,
    outcome,
    vouchers,
    rowsOf,
    yes,
    no,
    total,
    // outcomes of an allotment
    outcomeStored,
    outcomeNoCash,
    outcomeNothing,
    outcomeRefused,
    // verdicts and notices
    verdictMeets,
    verdictNoCash,
    verdictNothing,
    verdictRefused,
    savedRows,
    savedNoCash,
    savedNothing,
    noRows,
    noVouchers,
    reasonAtLine,
    refusalsFollow,
    moreRefusals,
    dryRun,
    interrupted,
    initInterrupted,
    stopped,
    databaseMade,
    progress,
    // failures
    errorLine,
    badKey,
    badYear,
    badPeriod,
    commandMissing,
    badLanguage,
    noVoucher,
    fileMissing,
    fileExists,
    notADatabase,
    databaseFailed,
    voucherFailed,
    outputFailed,
    settingsUnreadable,
    settingsBadKey,
    settingsBadType,
    settingsBadValue,
    settingsMissing,
    setNeedsValue,
    setUnknown,
    setTwice,
    setBadValue,
    folderMissing,
    folderEmpty,
    moveFailed,
    outOfMemory,
    internal,
    // failures of table files
    csvAt,
    csvAtColumn,
    csvInvalidUtf8,
    csvZeroByte,
    csvStrayQuote,
    csvUnclosedQuote,
    csvTooLong,
    csvUnreadable,
    csvNoMemory,
    csvCannotOpen,
    csvNoHeading,
    csvUnknownTable,
    csvTableTwice,
    csvUnknownColumn,
    csvColumnTwice,
    csvColumnMissing,
    csvTooManyFields,
    csvTooFewFields,
    csvNoName,
    // help
    helpProgram,
    helpInit,
    helpVouchers,
    helpRows,
    helpCheck,
    helpSave,
    helpAllot,
    helpLang,
    helpQuiet,
    helpJson,
    helpSettings,
    helpVersion,
    helpHelp,
    helpFile,
    helpKey,
    helpYear,
    helpPeriod,
    helpGenerate,
    helpDryRun,
    helpAll,
    helpSample,
    helpFrom,
    helpSet,
    examplesProgram,
    examplesInit,
    examplesVouchers,
    examplesRows,
    examplesCheck,
    examplesSave,
    examplesAllot,
    usageHint,
    count ///< the number of texts, no text itself
};

/// One text in both languages, with places {0}, {1} ... for arguments.
struct HostTextEntry {
    HostText id;
    std::string_view chinese;
    std::string_view english;
};

/// All texts in the order of their names.
[[nodiscard]] std::span<const HostTextEntry> hostTexts() noexcept;

/// A text in a language with its places filled.
[[nodiscard]] std::string hostText(Language language, HostText text, const std::vector<std::string>& arguments = {});

} // namespace z7::cashflow::host
