#pragma once

#include "z7cashflow/support/visibility.h"

#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A reason in a table: its number and its English text.
struct ReasonEntry {
    /// An entry for a name of an enumeration.
    template <class Id>
    constexpr ReasonEntry(Id id, int number, std::string_view english) noexcept
        : place(static_cast<std::size_t>(id)), number(number), english(english) {}

    std::size_t place;        ///< its position in the table, from 0
    int number;               ///< number of the errors raised for it; 0 if each error has its own
    std::string_view english; ///< without a full stop, because it can be part of a sentence
};

/// Whether a table has an entry for each name of an enumeration that ends in "count", in the order of the names. Each
/// table of reasons, English or translated, asserts this when it is compiled.
template <class Id, class Table> [[nodiscard]] constexpr bool isComplete(const Table& table) noexcept {
    std::size_t place = 0;
    for (const auto& entry : table) {
        if (entry.place != place++) {
            return false;
        }
    }
    return place == static_cast<std::size_t>(Id::count);
}

/// Why an error was raised, for programs and translations. reasonTable has the English text of each with its places
/// {0}, {1}; a host that speaks another language has a table of its own in the same order. It is an enumeration and not
/// a text, so that a misspelled name, and a table that lacks one, do not compile.
///
/// These are the reasons of the library. Code that is built on it has its own enumeration of the same form, with a
/// table and an entryOf(); for example, the database adapters have shared::DatabaseReason.
///
/// To add a reason: name it here, give it a number and English at the same place in Reason.cpp, and Chinese at the same
/// place in ChineseReason.cpp with the same places; then raise it (raisePlatformError, or an Error with a source of its
/// own).
enum class Reason {
    none,     ///< the error has only its description
    verbatim, ///< the text of a database, a driver or the system, unchanged
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
    // the dialog
    connectionFactoryMissing,
    dialogFactoryMissing,
    screenMissing,
    windowsInUse,
    dialogConnectionMissing,
    dialogRowsMissing,
    referenceNotXml,
    argumentNegative,
    editKindUnknown,
    propertyUnknown,
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
    count ///< the number of reasons, not a reason itself
};

/// The reasons of the library in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> reasonTable() noexcept;

/// The entry of a reason. The same is declared for other enumerations of reasons, each in its own namespace.
[[nodiscard]] const ReasonEntry& entryOf(Reason reason) noexcept;

/// An enumeration of reasons: its entries can be found.
template <class Id>
concept IsReason = requires(Id id) {
    { entryOf(id) }
    noexcept->std::same_as<const ReasonEntry&>;
};

/// A reason of any of these enumerations. It converts from a name of it and compares with it.
class ReasonId {
public:
    ReasonId() noexcept : ReasonId(Reason::none) {}
    /// Converts a name of any such enumeration.
    template <IsReason Id> ReasonId(Id id) noexcept : entry_(&entryOf(id)) {}

    /// Its entry in the table.
    [[nodiscard]] const ReasonEntry& entry() const noexcept { return *entry_; }
    /// Equal if both are the same name of the same enumeration.
    friend bool operator==(ReasonId, ReasonId) noexcept = default;

private:
    const ReasonEntry* entry_; ///< in a table that lives as long as the program
};

/// A reason with the arguments for its places. It contains no secrets, and long values are shortened.
struct Explanation {
    ReasonId reason{};                    ///< Reason::none if nothing is known
    std::vector<std::string> arguments{}; ///< in the order of the places {0}, {1}
    std::vector<Explanation> causes{};    ///< explanations that fill the places after those of the arguments
};

/// An explanation in English; the empty text for Reason::none.
[[nodiscard]] std::string englishText(const Explanation& why);

} // namespace z7::cashflow

Z7_PUBLIC_END
