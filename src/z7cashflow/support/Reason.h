#pragma once

#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow {

/// What there is to know of a reason.
struct ReasonEntry {
    /// An entry for a name of an enumeration.
    template <class Id>
    constexpr ReasonEntry(Id id, int number, std::string_view english) noexcept
        : place(static_cast<std::size_t>(id)), number(number), english(english) {}

    std::size_t place;        ///< in the table of its room, from 0
    int number;               ///< of the errors that are raised for it; 0 where each of them brings its own
    std::string_view english; ///< without a full stop, since it often goes on or stands inside another sentence
};

/// Whether a table has an entry for each name of an enumeration that ends in "count", in the order of the names. Every
/// table of reasons, English or translated, asserts it where it is compiled.
template <class Id, class Table> [[nodiscard]] constexpr bool isComplete(const Table& table) noexcept {
    std::size_t place = 0;
    for (const auto& entry : table) {
        if (entry.place != place++) {
            return false;
        }
    }
    return place == static_cast<std::size_t>(Id::count);
}

/// Why an error was raised. The id is what programs and translations work with; its English stands in Reason.cpp, the
/// Chinese of z7cf in host/text/ChineseReason.cpp, and a host of its own adds a table of its own. It is an enumeration
/// and not a text so that the compiler finds a misspelled one, and so that a table that lacks one does not compile.
/// What each says, and what its places take, is to be read in the table.
///
/// These are the reasons of the library. A room above it names its own in an enumeration of the same build, with a
/// table beside it and an entryOf(); the database adapters have shared::DatabaseReason, for example.
///
/// To add a reason: name it here, give it a number and English at the same place in Reason.cpp, and Chinese at the same
/// place in ChineseReason.cpp with the same places; then raise it (raisePlatformError, or an Error with a source of its
/// own).
enum class Reason {
    none,     ///< the error has only its description
    verbatim, ///< somebody else's words, such as a database's own text
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

/// The entry of a reason. A room above declares the same for its own enumeration, in the enumeration's namespace.
[[nodiscard]] const ReasonEntry& entryOf(Reason reason) noexcept;

/// An enumeration of reasons: its entries can be found.
template <class Id>
concept IsReason = requires(Id id) {
    { entryOf(id) }
    noexcept->std::same_as<const ReasonEntry&>;
};

/// The reason of any room. It is made from a name of that room's enumeration and compares with it.
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
    const ReasonEntry* entry_; ///< in the table of its room, which is there as long as the program
};

/// A reason with what its places take, in their order. Nothing in it is secret, and long values are shortened.
struct Explanation {
    ReasonId reason{};                    ///< Reason::none if nothing is known
    std::vector<std::string> arguments{}; ///< in the order of the places {0}, {1}
    std::vector<Explanation> causes{};    ///< explanations that fill the places after those of the arguments
};

/// An explanation in English; the empty text for Reason::none.
[[nodiscard]] std::string englishText(const Explanation& why);

} // namespace z7::cashflow
