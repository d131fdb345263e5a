#pragma once

#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

/// \file
/// Conversions between values and texts. They follow one table of rules and depend on no locale and no time zone.
///
/// Numbers read strictly: blanks around, a sign, thousands commas, a fraction, an exponent; anything else is not a
/// number. A boolean counts as 0 or -1 where a number is wanted, a date as its day number.
namespace z7::cashflow {

/// The text of a value: null fails with error 94; a number has at most 15 significant digits, no exponent
/// between 1E-15 and 1E15 and "." as its decimal sign; a boolean is "True" or "False"; a date is "yyyy-mm-dd", with
/// " hh:mm:ss" only where there is a time.
[[nodiscard]] std::string toText(const Variant& value);
/// As toText, but null becomes the empty text.
[[nodiscard]] std::string toTextOrEmpty(const Variant& value);
/// The text of a number, as by toText.
[[nodiscard]] std::string numberText(double value);

/// An integer; a fraction is rounded half to even. Error 6 if the result is out of range, 13 if the text is not a
/// number, 94 for null.
[[nodiscard]] std::uint8_t toByte(const Variant& value);
/// As toByte, for 16 bits.
[[nodiscard]] std::int16_t toInt16(const Variant& value);
/// As toByte, for 32 bits.
[[nodiscard]] std::int32_t toInt32(const Variant& value);
/// Error 13 if the text is not a number, 94 for null, 6 if the number is beyond what a double holds.
[[nodiscard]] double toDouble(const Variant& value);
/// A text reads as true or false in any letter case, or as a number, of which 0 is false; any other text is error 13,
/// null is error 94.
[[nodiscard]] bool toBool(const Variant& value);
/// A text reads as a date by the rule of readDate; a number is a day number. Error 13 if it does not read as a date,
/// 94 for null.
[[nodiscard]] Date toDate(const Variant& value);

/// The number that a text consists of; empty if the text is not a number.
[[nodiscard]] std::optional<double> readNumber(std::string_view text);
/// The number that a text begins with, or 0: "12a" is 12. A comma ends the number.
[[nodiscard]] double leadingNumber(std::string_view text);
/// A date written year first (yyyy-m-d, yyyy/m/d or yyyy.m.d optionally followed by h:mm or h:mm:ss), a valid day,
/// blanks around allowed; empty for any other text, such as digits alone, day-first forms and times alone.
[[nodiscard]] std::optional<Date> readDate(std::string_view text);

/// True if two values mean the same: as numbers if both read as numbers, otherwise as texts in the same letter case.
/// Null equals nothing, not even null.
[[nodiscard]] bool equalByValue(const Variant& a, const Variant& b);

/// True for null and for the empty text.
[[nodiscard]] bool isNullOrEmpty(const Variant& value) noexcept;

/// Text compared without regard to letter case, in all scripts that have one: the folded form of a UTF-8 text.
/// Bytes that are not valid UTF-8 are unchanged.
[[nodiscard]] std::string foldCase(std::string_view text);
/// Lower and upper case of ASCII letters only, for names of tables and columns and for option values.
[[nodiscard]] std::string asciiLower(std::string_view text);
/// The same in upper case.
[[nodiscard]] std::string asciiUpper(std::string_view text);

/// The number of characters (code points) of a UTF-8 text.
[[nodiscard]] std::size_t characterCount(std::string_view text) noexcept;
/// The first count characters of a UTF-8 text, or all of it if it has fewer.
[[nodiscard]] std::string_view leftCharacters(std::string_view text, std::size_t count) noexcept;

/// A text shortened for a message: 60 characters, followed by "..." if there are more.
[[nodiscard]] std::string shortened(std::string_view text);

} // namespace z7::cashflow

Z7_PUBLIC_END
