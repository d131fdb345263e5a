#include "adapters/sqlite/functions.h"

#include "adapters/shared/recordset/fieldValue.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/tsql/declaredType.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

namespace z7::cashflow::sqlite {
namespace {

constexpr int plainFunction = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

std::string_view withoutEndBlanks(std::string_view text) {
    while (text.ends_with(' ')) {
        text.remove_suffix(1);
    }
    return text;
}

unsigned char folded(unsigned char c) { return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c; }

int collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return compareTexts({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                        {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text == nullptr ? std::string_view()
                           : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

Variant valueOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_TEXT:
    case SQLITE_BLOB:
        return Variant(textOf(value));
    default:
        return Variant(sqlite3_value_double(value));
    }
}

void giveText(sqlite3_context* context, std::string_view text) {
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void giveValue(sqlite3_context* context, const Variant& value) {
    if (value.isNull()) {
        sqlite3_result_null(context);
    } else if (const auto* text = value.get<std::string>()) {
        giveText(context, *text);
    } else if (const auto* date = value.get<Date>()) {
        giveText(context, dateText(*date));
    } else if (const auto* real = value.get<double>()) {
        sqlite3_result_double(context, *real);
    } else if (const auto* truth = value.get<bool>()) {
        sqlite3_result_int(context, *truth ? 1 : 0);
    } else {
        sqlite3_result_int(context, toInt32(value));
    }
}

/// Runs the body of a function; its Error becomes the statement's. No exception may pass through the database library.
template <class Body> void guarded(sqlite3_context* context, Body&& body) {
    try {
        try {
            body();
        } catch (const Error& error) {
            failFunction(context, error.asCause());
        }
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

void fail(sqlite3_context* context, SqliteReason reason) {
    guarded(context, [&] { failFunction(context, {reason}); });
}

void like(sqlite3_context* context, int, sqlite3_value** arguments) {
    guarded(context, [&] {
        const bool anyNull =
            sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL;
        if (!anyNull) {
            sqlite3_result_int(context, isLike(textOf(arguments[1]), textOf(arguments[0])) ? 1 : 0);
        }
    });
}

/// The intermediate state of a sum. Values with at most four decimals, such as money, are added as whole
/// ten-thousandths, so that 0.1 + 0.2 - 0.3 is 0 as on the server; others as doubles with compensation of rounding
/// errors.
struct SumState {
    std::int64_t units;
    double total;
    double lost;
    bool any;
    bool real;
    bool inexact;
};

void addToSum(SumState& state, double value) {
    const double next = state.total + value;
    state.lost +=
        std::fabs(state.total) >= std::fabs(value) ? (state.total - next) + value : (value - next) + state.total;
    state.total = next;
    const double units = std::nearbyint(value * 10000.0);
    if (!(std::fabs(units) < 9.0e15) || units / 10000.0 != value ||
        __builtin_add_overflow(state.units, static_cast<std::int64_t>(units), &state.units)) {
        state.inexact = true;
    }
}

void sumStep(sqlite3_context* context, int, sqlite3_value** arguments) {
    const int type = sqlite3_value_numeric_type(arguments[0]);
    if (type == SQLITE_NULL) {
        return;
    }
    auto* state = static_cast<SumState*>(sqlite3_aggregate_context(context, sizeof(SumState)));
    if (state == nullptr) {
        sqlite3_result_error_nomem(context);
        return;
    }
    if (type == SQLITE_TEXT || type == SQLITE_BLOB) {
        fail(context, SqliteReason::sumOfTexts);
        return;
    }
    state->any = true;
    state->real = state->real || type == SQLITE_FLOAT;
    addToSum(*state, sqlite3_value_double(arguments[0]));
}

void sumFinal(sqlite3_context* context) {
    const auto* state = static_cast<const SumState*>(sqlite3_aggregate_context(context, 0));
    if (state == nullptr || !state->any) {
        sqlite3_result_null(context);
    } else if (state->real) {
        sqlite3_result_double(context, state->inexact ? state->total + state->lost
                                                      : static_cast<double>(state->units) / 10000.0);
    } else if (state->inexact) {
        sqlite3_result_double(context, state->total + state->lost);
    } else {
        sqlite3_result_int64(context, state->units / 10000);
    }
}

const std::optional<std::int16_t>& yearOf(sqlite3_context* context) {
    return *static_cast<const std::optional<std::int16_t>*>(sqlite3_user_data(context));
}

void sessionYear(sqlite3_context* context, int, sqlite3_value**) {
    if (yearOf(context)) {
        sqlite3_result_int(context, *yearOf(context));
    }
}

void requiredYear(sqlite3_context* context, int, sqlite3_value**) {
    if (yearOf(context)) {
        sqlite3_result_int(context, *yearOf(context));
    } else {
        fail(context, SqliteReason::yearMissing);
    }
}

void plus(sqlite3_context* context, int, sqlite3_value** arguments) {
    const int a = sqlite3_value_type(arguments[0]);
    const int b = sqlite3_value_type(arguments[1]);
    if (a == SQLITE_NULL || b == SQLITE_NULL) {
        return;
    }
    guarded(context, [&] {
        if (a == SQLITE_TEXT && b == SQLITE_TEXT) {
            giveText(context, std::string(textOf(arguments[0])).append(textOf(arguments[1])));
        } else if (a == SQLITE_INTEGER && b == SQLITE_INTEGER) {
            std::int64_t sum = 0;
            if (__builtin_add_overflow(sqlite3_value_int64(arguments[0]), sqlite3_value_int64(arguments[1]), &sum)) {
                raisePlatformError(Reason::sumOutOfRange);
            }
            sqlite3_result_int64(context, sum);
        } else {
            sqlite3_result_double(context, toDouble(valueOf(arguments[0])) + toDouble(valueOf(arguments[1])));
        }
    });
}

void length(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) != SQLITE_NULL) {
        const std::size_t count = characterCount(withoutEndBlanks(textOf(arguments[0])));
        sqlite3_result_int64(context, static_cast<std::int64_t>(count));
    }
}

void castTo(sqlite3_context* context, int, sqlite3_value** arguments) {
    guarded(context, [&] {
        const shared::Column type = tsql::declaredColumn({}, textOf(arguments[1]));
        Variant value = valueOf(arguments[0]);
        using shared::ColumnType;
        const bool whole =
            type.type == ColumnType::byte || type.type == ColumnType::int16 || type.type == ColumnType::int32;
        if (whole && value.is<double>()) {
            value = Variant(std::trunc(*value.get<double>())); // the server truncates fractions
        }
        const auto* text = value.get<std::string>();
        if (type.type == ColumnType::text && !value.isNull()) {
            const std::string all = text != nullptr ? *text : toText(value);
            giveText(context, type.length > 0 ? leftCharacters(all, static_cast<std::size_t>(type.length)) : all);
        } else {
            giveValue(context, shared::fieldValue({"cast", type.type, 0}, value));
        }
    });
}

void require(sqlite3* handle, int code) {
    if (code != SQLITE_OK) {
        raiseDatabaseError(handle);
    }
}

void addFunction(sqlite3* handle, const char* name, int arguments,
                 void (*body)(sqlite3_context*, int, sqlite3_value**)) {
    require(handle, sqlite3_create_function_v2(handle, name, arguments, plainFunction, nullptr, body, nullptr, nullptr,
                                               nullptr));
}

void addYearFunction(sqlite3* handle, const char* name, std::optional<std::int16_t> year,
                     void (*body)(sqlite3_context*, int, sqlite3_value**)) {
    using Year = std::optional<std::int16_t>;
    auto owned = std::make_unique<Year>(year);
    // The library destroys it together with the function, even if the registration fails.
    require(handle,
            sqlite3_create_function_v2(handle, name, 0, plainFunction, owned.release(), body, nullptr, nullptr,
                                       [](void* data) { std::default_delete<Year>()(static_cast<Year*>(data)); }));
}

/// Whether an inner join of texts that are equal under the collation, but not byte by byte, finds its row. For the
/// inner table the library builds a temporary index and, from 3.38 on, a Bloom filter.
bool joinFindsEqualTexts(sqlite3* handle) {
    return queryInteger(handle,
                        "WITH RECURSIVE "
                        "stored(t) AS (SELECT 'k  ' UNION ALL SELECT 'z' || t FROM stored WHERE length(t) < 6), "
                        "sought(t) AS (SELECT 'k' UNION ALL SELECT 'y' || t FROM sought WHERE length(t) < 3) "
                        "SELECT count(*) FROM sought JOIN stored ON sought.t = stored.t COLLATE z7_text") == 1;
}

/// The library promises that every plan respects a collation, but one optimization in some versions does not: the
/// Bloom filter of 3.38 to 3.40 hashes a text by its length, so that "1001 " does not match "1001", nor a letter
/// one that folds to it from a different number of bytes. Later versions give all texts the same hash. The
/// behaviour is tested, not the version: if a row is lost, the filter is turned off; if that does not help, no
/// session is opened.
void requireWholeJoins(sqlite3* handle) {
    if (joinFindsEqualTexts(handle)) {
        return;
    }
    constexpr int bloomFilter = 0x80000;
    sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, handle, bloomFilter);
    if (!joinFindsEqualTexts(handle)) {
        raiseDatabaseError(SqliteReason::joinsLoseRows, {sqlite3_libversion()});
    }
}

/// The beginning of the character that contains the byte at a position.
std::size_t characterStart(std::string_view text, std::size_t at) {
    while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) {
        --at;
    }
    return at;
}

/// The length in bytes of a text's first character.
std::size_t characterSize(std::string_view text) { return leftCharacters(text, 1).size(); }

/// Matches one character against a set that begins after "[", and sets behind to the pattern after the "]". An
/// unclosed bracket matches nothing.
bool matchesSet(std::string_view character, std::string_view set, std::string_view& behind) {
    const bool inverted = set.starts_with('^');
    set.remove_prefix(inverted ? 1 : 0);
    bool found = false;
    bool first = true;
    while (!set.empty() && (first || set.front() != ']')) {
        first = false;
        const std::string_view low = set.substr(0, characterSize(set));
        set.remove_prefix(low.size());
        std::string_view high = low;
        if (set.size() > 1 && set.front() == '-' && set[1] != ']') {
            set.remove_prefix(1);
            high = set.substr(0, characterSize(set));
            set.remove_prefix(high.size());
        }
        found = found || (character >= low && character <= high);
    }
    if (set.empty()) {
        return false;
    }
    behind = set.substr(1);
    return found != inverted;
}

/// Matches one character of the text against the head of the pattern, which is not "%", and advances both.
bool matchesOne(std::string_view& text, std::string_view& pattern) {
    if (text.empty() || pattern.empty()) {
        return false;
    }
    const std::string_view character = text.substr(0, characterSize(text));
    std::string_view behind = pattern.substr(characterSize(pattern));
    bool matches = false;
    if (pattern.front() == '_') {
        matches = true;
    } else if (pattern.front() == '[') {
        matches = matchesSet(character, pattern.substr(1), behind);
    } else {
        matches = pattern.starts_with(character);
    }
    text.remove_prefix(character.size());
    pattern = behind;
    return matches;
}

} // namespace

int compareTexts(std::string_view a, std::string_view b) {
    a = withoutEndBlanks(a);
    b = withoutEndBlanks(b);
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto left = static_cast<unsigned char>(a[i]);
        const auto right = static_cast<unsigned char>(b[i]);
        if (left == right) {
            continue;
        }
        if (left < 0x80 && right < 0x80) {
            if (folded(left) != folded(right)) {
                return folded(left) < folded(right) ? -1 : 1;
            }
            continue;
        }
        std::size_t start = characterStart(a, i);
        if (start == i) {
            start = characterStart(b, i);
        }
        return foldCase(a.substr(start)).compare(foldCase(b.substr(start)));
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool isLike(std::string_view text, std::string_view pattern) {
    const std::string foldedText = foldCase(text);
    const std::string foldedPattern = foldCase(pattern);
    text = foldedText;
    pattern = foldedPattern;
    bool starred = false;
    std::string_view textAtStar;
    std::string_view patternAtStar;
    while (true) {
        if (pattern.starts_with('%')) {
            pattern.remove_prefix(1);
            starred = true;
            textAtStar = text;
            patternAtStar = pattern;
            continue;
        }
        if (text.empty() && pattern.empty()) {
            return true;
        }
        if (matchesOne(text, pattern)) {
            continue;
        }
        if (!starred || textAtStar.empty()) {
            return false;
        }
        textAtStar.remove_prefix(characterSize(textAtStar)); // let the last "%" match one more character
        text = textAtStar;
        pattern = patternAtStar;
    }
}

void prepareSession(sqlite3* handle, std::optional<std::int16_t> year) {
    require(handle, sqlite3_create_collation_v2(handle, "z7_text", SQLITE_UTF8, nullptr, collate, nullptr));
    addFunction(handle, "like", 2, like);
    addFunction(handle, "z7_plus", 2, plus);
    addFunction(handle, "z7_len", 1, length);
    addFunction(handle, "z7_cast", 2, castTo);
    require(handle,
            sqlite3_create_function_v2(handle, "sum", 1, plainFunction, nullptr, nullptr, sumStep, sumFinal, nullptr));
    addYearFunction(handle, "z7_year", year, sessionYear);
    addYearFunction(handle, "z7_required_year", year, requiredYear);
    requireWholeJoins(handle);
}

} // namespace z7::cashflow::sqlite
