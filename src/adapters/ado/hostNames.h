#pragma once

/// The names by which the host's own objects are used. Names are looked up without regard to letter case.
namespace z7::cashflow::ado::names {

// The login.
inline constexpr const wchar_t* localeId = L"LocaleId";                       ///< whole number such as 2052
inline constexpr const wchar_t* accountId = L"AccountId";                     ///< text such as "001"
inline constexpr const wchar_t* accountingYear = L"AccountingYear";           ///< digits such as "2013"
inline constexpr const wchar_t* userId = L"UserId";                           ///< text
inline constexpr const wchar_t* operatorName = L"OperatorName";               ///< text
inline constexpr const wchar_t* connectionString = L"ConnectionString";       ///< text
inline constexpr const wchar_t* information = L"Information";                 ///< any value, by a whole number
inline constexpr const wchar_t* languageTag = L"LanguageTag";                 ///< text such as "zh-CN"
inline constexpr const wchar_t* textLookup = L"TextLookup";                   ///< object
inline constexpr const wchar_t* formattedTextLookup = L"FormattedTextLookup"; ///< object

// The two catalogues of texts: Text(key), and Text(key, arguments) with an array of variants.
inline constexpr const wchar_t* text = L"Text";

// The suite's message box.
inline constexpr const wchar_t* messageBoxClass = L"Z7MessageBox.MessageBox"; ///< program identifier
inline constexpr const wchar_t* locale = L"Locale"; ///< property: the locale identifier in decimal, as text
inline constexpr const wchar_t* show = L"Show";     ///< prompt, buttons, title, help file, context: a whole number

} // namespace z7::cashflow::ado::names
