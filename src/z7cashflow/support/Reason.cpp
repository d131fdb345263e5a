#include "z7cashflow/support/Reason.h"

#include "z7cashflow/support/errorNumbers.h"
#include "z7cashflow/support/textPlaces.h"

#include <array>
#include <cstddef>

namespace z7::cashflow {

namespace {

using R = Reason;

constexpr std::array table{
    ReasonEntry{R::none, 0, ""},
    ReasonEntry{R::verbatim, 0, "{0}"},

    ReasonEntry{R::notANumber, errors::typeMismatch, "\"{0}\" is not a number"},
    ReasonEntry{R::notADate, errors::typeMismatch, "\"{0}\" is not a date"},
    ReasonEntry{R::noSuchDate, errors::typeMismatch, "There is no such date"},
    ReasonEntry{R::dateOutOfRange, errors::overflow, "The date is not in the years 100 to 9999"},
    ReasonEntry{R::numberOutOfRange, errors::overflow, "The number {0} is out of range"},
    ReasonEntry{R::numberNotFinite, errors::overflow, "The number is not finite"},
    ReasonEntry{R::sumOutOfRange, errors::overflow, "The sum of two whole numbers is out of range"},
    ReasonEntry{R::amountTooFine, errors::typeMismatch, "The amount \"{0}\" has more than four decimals"},
    ReasonEntry{R::zeroByte, errors::badArgument, "A text holds a zero byte after \"{0}\""},
    ReasonEntry{R::invalidUtf8, errors::badArgument, "A text is not valid UTF-8 at byte {0}, after \"{1}\""},
    ReasonEntry{R::valueMissing, errors::invalidNull,
                "A required value is missing, such as the debit or credit amount of an entry line"},

    ReasonEntry{R::keyUnknown, errors::badArgument, "The list has no entry with the key \"{0}\""},
    ReasonEntry{R::indexOutOfRange, errors::badIndex, "The list has no entry number {0}"},
    ReasonEntry{R::controlUnknown, errors::badIndex, "The window has no control named \"{0}\""},
    ReasonEntry{R::keyExists, errors::keyExists, "The list already has an entry with the key \"{0}\""},
    ReasonEntry{R::fieldExists, errors::keyExists, "There is already a field named \"{0}\""},
    ReasonEntry{R::loginMissing, errors::objectNotSet, "No login has been set"},
    ReasonEntry{R::formattedTextsMissing, errors::objectNotSet, "The login has no service for texts with arguments"},
    ReasonEntry{R::textKeyUnknown, errors::badArgument, "The text catalogue has no key \"{0}\""},
    ReasonEntry{R::schemaFieldMissing, errors::objectNotSet, "There is no field to add"},
    ReasonEntry{R::rowsMissing, errors::objectNotSet, "There are no rows to check"},
    ReasonEntry{R::linesMissing, errors::objectNotSet, "The voucher has no entry lines to check"},
    ReasonEntry{R::attributeMissing, errors::objectNotSet, "An entry line has no attribute {0}"},
    ReasonEntry{R::collectionNotText, errors::typeMismatch, "Rows are read from the text of an XML document only"},
    ReasonEntry{R::rowNotElement, errors::typeMismatch, "A row is read from its XML element only"},
    ReasonEntry{R::rowFieldUnknown, errors::unknownRowField, "The row has no field named \"{0}\""},
    ReasonEntry{
        R::valueWithQuote, errors::statementRefused,
        "A value would change the statement that it goes into, so the statement was not run: {0} is \"{1}\", which contains a quote (statement {2}). Correct the value where it was entered"},
    ReasonEntry{
        R::valueNotOneNumber, errors::statementRefused,
        "A value would change the statement that it goes into, so the statement was not run: {0} is \"{1}\", which is not one number (statement {2}). Correct the value where it was entered"},
    ReasonEntry{
        R::valueNotTableName, errors::statementRefused,
        "A value would change the statement that it goes into, so the statement was not run: {0} is \"{1}\", which is not the name of a table (statement {2}). Correct the value where it was entered"},
    ReasonEntry{
        R::valueNotColumnName, errors::statementRefused,
        "A value would change the statement that it goes into, so the statement was not run: {0} is \"{1}\", which is not the name of a column (statement {2}). Correct the value where it was entered"},
    ReasonEntry{R::periodsReversed, errors::badArgument, "The first period {0} lies after the last period {1}"},
    ReasonEntry{R::notCashAccount, errors::badArgument, "Account {0} is not a cash account of this year"},

    ReasonEntry{R::connectionFactoryMissing, errors::objectNotSet, "No connection factory has been set"},
    ReasonEntry{R::dialogFactoryMissing, errors::objectNotSet, "No dialog factory has been set"},
    ReasonEntry{R::screenMissing, errors::objectNotSet, "There is no screen to show a window on"},
    ReasonEntry{R::windowsInUse, errors::inUse,
                "This program already shows cash-flow rows in a window. Close that window first"},
    ReasonEntry{R::dialogConnectionMissing, errors::objectNotSet, "The dialog has no connection"},
    ReasonEntry{R::dialogRowsMissing, errors::objectNotSet, "The dialog has no rows"},
    ReasonEntry{R::referenceNotXml, errors::badArgument, "The description of the reference is not valid XML"},
    ReasonEntry{R::argumentNegative, errors::badArgument, "The number {0} is negative"},
    ReasonEntry{R::editKindUnknown, errors::badArgument, "There is no kind of entry {0}"},
    ReasonEntry{R::propertyUnknown, errors::memberUnknown, "The object has no property {0}"},

    ReasonEntry{R::xmlEmpty, 0, "The document is empty"},
    ReasonEntry{R::xmlTooLong, 0, "The document is longer than 2 GiB"},
    ReasonEntry{R::xmlZeroByte, 0, "The document holds a zero byte"},
    ReasonEntry{R::xmlTooMuchMarkup, 0,
                "The document has too many tags or attributes, or more than 512 attributes on one element"},
    ReasonEntry{R::xmlNotXml, 0, "Line {0}: the text is not XML"},
    ReasonEntry{R::xmlNotWellFormed, 0, "Line {0}: the document is not well-formed"},
    ReasonEntry{R::xmlTextAfterEnd, 0, "Line {0}: there is more text after the end of the document"},
    ReasonEntry{R::xmlTagMismatch, 0, "Line {0}: an end tag does not match its start tag"},
    ReasonEntry{R::xmlTagNotFinished, 0, "Line {0}: the document ends before all its elements are closed"},
    ReasonEntry{R::xmlAttributeTwice, 0, "Line {0}: an element has the same attribute twice"},
    ReasonEntry{R::xmlAttributeWithoutValue, 0, "Line {0}: an attribute has no value in quotes"},
    ReasonEntry{R::xmlAttributeNotFinished, 0, "Line {0}: the value of an attribute is not closed, or holds \"<\""},
    ReasonEntry{R::xmlEntityUnknown, 0, "Line {0}: a \"&\" does not begin a known entity; write &amp;"},
    ReasonEntry{R::xmlPrefixUndeclared, 0, "Line {0}: a prefix is not declared"},
    ReasonEntry{R::xmlCharacterInvalid, 0, "Line {0}: a character is not allowed, or the text is not UTF-8"},
    ReasonEntry{R::xmlBeyondLimits, 0,
                "Line {0}: the document is nested too deeply, or declares or refers to what is not accepted"},
};

static_assert(isComplete<Reason>(table));

} // namespace

std::span<const ReasonEntry> reasonTable() noexcept { return table; }

const ReasonEntry& entryOf(Reason reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

std::string englishText(const Explanation& why) {
    std::vector<std::string> arguments = why.arguments;
    for (const Explanation& cause : why.causes) {
        arguments.push_back(englishText(cause));
    }
    return fillPlaces(why.reason.entry().english, arguments);
}

} // namespace z7::cashflow
