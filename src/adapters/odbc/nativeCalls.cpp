#include "adapters/odbc/nativeCalls.h"

#include "adapters/odbc/utf8.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <type_traits>

#if defined(_WIN32) && !defined(Z7_ODBC_WIDE)
#define Z7_ODBC_WIDE 1
#endif
#if defined(Z7_ODBC_WIDE)
#define Z7_ODBC_CALL(name) name##W // the macro selects one of the two names of an ODBC call
#else
#define Z7_ODBC_CALL(name) name
#endif

namespace z7::cashflow::odbc {
namespace {

#if defined(Z7_ODBC_WIDE)
using Char = SQLWCHAR;
using NativeText = std::u16string;
constexpr SQLSMALLINT textType = SQL_C_WCHAR;
static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

NativeText native(std::string_view utf8) { return widened(utf8); }
std::string utf8Of(std::u16string_view text) { return narrowed(text); }
#else
using Char = SQLCHAR;
using NativeText = std::string;
constexpr SQLSMALLINT textType = SQL_C_CHAR;

NativeText native(std::string_view utf8) { return NativeText(utf8); }
std::string utf8Of(std::string_view text) { return std::string(text); }
#endif

using NativeView = std::basic_string_view<NativeText::value_type>;

/// ODBC takes constant texts by pointers to non-const. They are passed zero-terminated, because drivers disagree on
/// whether the length of a wide text counts characters or bytes.
Char* pointer(NativeText& text) { return reinterpret_cast<Char*>(text.data()); }

template <std::size_t Size>
std::string utf8Of(const std::array<NativeText::value_type, Size>& buffer, std::size_t length) {
    return utf8Of(NativeView(buffer.data(), std::min(length, Size - 1)));
}

/// The end of a text whose length the driver does not report.
std::size_t zeroAt(const std::string& buffer) {
    constexpr std::size_t unit = sizeof(NativeText::value_type);
    std::size_t at = 0;
    while (at + unit < buffer.size() && buffer.find_first_not_of('\0', at) < at + unit) {
        at += unit;
    }
    return at;
}

std::string attributeText(Handle statement, int position, SQLUSMALLINT attribute) {
    std::array<NativeText::value_type, 256> buffer{};
    SQLSMALLINT bytes = 0;
    const SQLRETURN answer =
        Z7_ODBC_CALL(SQLColAttribute)(statement, static_cast<SQLUSMALLINT>(position), attribute, buffer.data(),
                                      static_cast<SQLSMALLINT>(sizeof(buffer)), &bytes, nullptr);
    if (!SQL_SUCCEEDED(answer)) {
        return {};
    }
    const NativeView text(buffer.data(), buffer.size() - 1);
    return utf8Of(text.substr(0, text.find(NativeText::value_type())));
}

} // namespace

Return driverConnect(Handle connection, const std::string& text) {
    NativeText given = native(text);
    return Z7_ODBC_CALL(SQLDriverConnect)(connection, nullptr, pointer(given), SQL_NTS, nullptr, 0, nullptr,
                                          SQL_DRIVER_NOPROMPT);
}

Return executeDirect(Handle statement, const std::string& text) {
    NativeText given = native(text);
    return Z7_ODBC_CALL(SQLExecDirect)(statement, pointer(given), SQL_NTS);
}

Return describeColumn(Handle statement, int position, DriverColumn& column) {
    std::array<NativeText::value_type, 512> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    const auto number = static_cast<SQLUSMALLINT>(position);
    const SQLRETURN answer =
        Z7_ODBC_CALL(SQLDescribeCol)(statement, number, reinterpret_cast<Char*>(name.data()),
                                     static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &nullable);
    if (!SQL_SUCCEEDED(answer)) {
        return answer;
    }
    column.name = utf8Of(name, length > 0 ? static_cast<std::size_t>(length) : 0);
    column.sqlType = type;
    column.size = size;
    column.digits = digits;
    return answer;
}

void describeOrigin(Handle statement, int position, DriverColumn& column) {
    column.typeName = attributeText(statement, position, SQL_DESC_TYPE_NAME);
    column.table = attributeText(statement, position, SQL_DESC_BASE_TABLE_NAME);
    SQLLEN identity = SQL_FALSE;
    column.identity =
        SQL_SUCCEEDED(Z7_ODBC_CALL(SQLColAttribute)(statement, static_cast<SQLUSMALLINT>(position),
                                                    SQL_DESC_AUTO_UNIQUE_VALUE, nullptr, 0, nullptr, &identity)) &&
        identity == SQL_TRUE;
}

bool diagnosticRecord(short handleType, Handle handle, int number, DiagnosticRecord& record) {
    std::array<NativeText::value_type, 6> state{};
    std::array<NativeText::value_type, 2048> text{};
    SQLINTEGER nativeError = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN answer = Z7_ODBC_CALL(SQLGetDiagRec)(
        handleType, handle, static_cast<SQLSMALLINT>(number), reinterpret_cast<Char*>(state.data()), &nativeError,
        reinterpret_cast<Char*>(text.data()), static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(answer)) {
        return false;
    }
    record.state = utf8Of(state, 5);
    record.native = nativeError;
    record.text = utf8Of(text, length > 0 ? static_cast<std::size_t>(length) : 0);
    return true;
}

Return primaryKeys(Handle statement, const std::string& database, const std::string& table) {
    NativeText catalogue = native(database);
    NativeText name = native(table);
    const SQLSMALLINT length = database.empty() ? 0 : SQL_NTS;
    return Z7_ODBC_CALL(SQLPrimaryKeys)(statement, database.empty() ? nullptr : pointer(catalogue), length, nullptr, 0,
                                        pointer(name), SQL_NTS);
}

ParameterText::ParameterText(std::string_view utf8) {
    const NativeText text = native(utf8);
    bytes_.assign(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(NativeText::value_type));
    length_ = text.size();
}

short ParameterText::cType() noexcept { return textType; }

TextReader::Outcome TextReader::read(Handle statement, int column) {
    pieces_.clear();
    text_ = {};
    constexpr std::size_t unit = sizeof(NativeText::value_type);
    while (true) {
        SQLLEN bytes = 0;
        const SQLRETURN answer = SQLGetData(statement, static_cast<SQLUSMALLINT>(column), textType, buffer_.data(),
                                            static_cast<SQLLEN>(buffer_.size()), &bytes);
        if (answer == SQL_NO_DATA) {
            break;
        }
        if (!SQL_SUCCEEDED(answer)) {
            return Outcome::failed;
        }
        if (bytes == SQL_NULL_DATA) {
            return Outcome::null;
        }
        const std::size_t room = buffer_.size() - unit; // each piece ends in a zero
        const bool told = bytes != SQL_NO_TOTAL;
        const bool whole = told ? static_cast<std::size_t>(bytes) <= room : answer == SQL_SUCCESS;
        text_ = std::string_view(buffer_).substr(0, !whole ? room
                                                    : told ? static_cast<std::size_t>(bytes)
                                                           : zeroAt(buffer_));
        if (whole && pieces_.empty()) {
            break;
        }
        pieces_.append(text_);
        text_ = pieces_;
        if (whole) {
            break;
        }
        constexpr std::size_t largestPiece = std::size_t{1} << 20U;
        buffer_.resize(std::min(buffer_.size() * 4, largestPiece));
    }
#if defined(Z7_ODBC_WIDE)
    std::u16string wide(text_.size() / unit, u'\0');
    std::copy(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(wide.size() * unit),
              reinterpret_cast<char*>(wide.data()));
    pieces_ = narrowed(wide);
    text_ = pieces_;
#endif
    return Outcome::value;
}

} // namespace z7::cashflow::odbc
