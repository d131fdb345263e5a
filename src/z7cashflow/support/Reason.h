#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow {

/// Why an error was raised. The id is what programs and translations work with; its English stands in Reason.cpp, the Chinese of
/// z7cf in host/text/chineseReasons.cpp, and a host of its own adds a table of its own. It is an enumeration and not a text so
/// that the compiler finds a misspelled one, and so that a table that lacks one does not compile. What each says, and what its
/// places take, is to be read in the table.
///
/// To add a reason: name it here, give it a number and English at the same place in Reason.cpp, and Chinese at the same place in
/// chineseReasons.cpp with the same places; then raise it (raisePlatformError, or an Error with a source of its own).
enum class Reason {
    none, ///< the error has only its description, such as a database's own text
    // values
    notANumber,
    notADate,
    noSuchDate,
    dateOutOfRange,
    numberOutOfRange,
    numberNotFinite,
    sumOutOfRange,
    amountTooFine,
    zeroByte,
    invalidUtf8,
    valueMissing,
    // lists and objects
    keyUnknown,
    indexOutOfRange,
    controlUnknown,
    keyExists,
    fieldExists,
    loginMissing,
    formattedTextsMissing,
    textKeyUnknown,
    schemaFieldMissing,
    rowsMissing,
    linesMissing,
    attributeMissing,
    collectionNotText,
    rowNotElement,
    rowFieldUnknown,
    valueWithQuote,
    valueNotOneNumber,
    valueNotTableName,
    valueNotColumnName,
    periodsReversed,
    notCashAccount,
    // XML
    xmlEmpty,
    xmlTooLong,
    xmlZeroByte,
    xmlTooMuchMarkup,
    xmlNotXml,
    xmlNotWellFormed,
    xmlTextAfterEnd,
    xmlTagMismatch,
    xmlTagNotFinished,
    xmlAttributeTwice,
    xmlAttributeWithoutValue,
    xmlAttributeNotFinished,
    xmlEntityUnknown,
    xmlPrefixUndeclared,
    xmlCharacterInvalid,
    xmlBeyondLimits,
    // connections and recordsets
    fieldUnknown,
    fieldPositionUnknown,
    recordMissing,
    recordsetReadOnly,
    recordWithoutKey,
    columnOfExpression,
    recordChanged,
    objectClosed,
    objectOpen,
    connectionMissing,
    connectionForeign,
    filterUnreadable,
    filterWithoutNumber,
    resultTooLong,
    columnValueBad,
    columnTextTooLong,
    count ///< the number of reasons, not a reason itself
};

/// A reason with what its places take, in their order. Nothing in it is secret, and long values are shortened.
struct Explanation {
    Reason reason = Reason::none;
    std::vector<std::string> arguments{};
};

/// What there is to know of a reason.
struct ReasonEntry {
    Reason id;
    int number;               ///< of the errors that are raised for it; 0 where each of them brings its own
    std::string_view english; ///< without a full stop, since it often goes on or stands inside another sentence
};

/// All reasons in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> reasonTable() noexcept;

/// The error number of a reason; 0 where each error brings its own.
[[nodiscard]] int numberOf(Reason reason) noexcept;

/// An explanation in English; the empty text for Reason::none.
[[nodiscard]] std::string englishText(const Explanation& why);

} // namespace z7::cashflow
