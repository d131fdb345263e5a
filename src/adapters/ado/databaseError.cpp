#include "adapters/ado/databaseError.h"

#include "adapters/ado/connectionSecrets.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/conversions.h"

#include <cstdint>
#include <optional>

namespace z7::cashflow::ado {
namespace {

using adapters::automation::Dispatch;

/// An entry of the Errors collection.
struct Entry {
    std::int32_t code = 0;
    std::int32_t native = 0;
    std::string state;
    std::string source;
    std::string description;
};

Entry entryAt(const Dispatch& errors, std::int32_t position) {
    const Dispatch item = errors.getObject(L"Item", position);
    Entry entry;
    entry.code = toInt32(item.get(L"Number").value());
    entry.native = toInt32(item.get(L"NativeError").value());
    entry.state = toTextOrEmpty(item.get(L"SQLState").value());
    entry.source = toTextOrEmpty(item.get(L"Source").value());
    entry.description = toTextOrEmpty(item.get(L"Description").value());
    return entry;
}

/// Such as "The statement has been terminated.", which has the code of the error that it comes with.
bool isWarning(const Entry& entry) { return entry.state.starts_with("01"); }

/// The entry of an error; empty if there is none, because the entries of an older error remain in the collection.
std::optional<Entry> entryOfError(const Error& error, const Dispatch& connection) {
    const Dispatch errors = connection.getObject(L"Errors");
    const std::int32_t count = toInt32(errors.get(L"Count").value());
    for (std::int32_t position = 0; position < count; ++position) {
        Entry entry = entryAt(errors, position);
        if (!isWarning(entry) && (entry.code == error.number() || entry.description == error.description())) {
            return entry;
        }
    }
    return std::nullopt;
}

/// What the codes say that have no number of the database, because the provider itself raises them; else empty.
std::optional<Error> errorOfCode(const Error& error) {
    constexpr auto transactionExists = static_cast<int>(0x8004D013);
    constexpr auto noTransaction = static_cast<int>(0x8004D00E);
    switch (error.number()) {
    case transactionExists:
        return Error(errors::transactionExists, error.source(), {shared::DatabaseReason::transactionOpen});
    case noTransaction:
        return Error(errors::noTransactionToCommit, error.source(), {shared::DatabaseReason::noTransactionToCommit});
    default:
        return std::nullopt;
    }
}

} // namespace

Error databaseError(const Error& error, const Dispatch& connection, const std::vector<std::string>& secrets) {
    if (error.number() >= 0) {
        const std::string text = withoutSecrets(error.description(), secrets);
        return text == error.description()
                   ? error
                   : Error(error.number(), error.source(), Explanation{Reason::verbatim, {text}});
    }
    std::optional<Entry> entry;
    if (connection) {
        // The error itself is more important than a failure to learn more about it.
        ignoringErrors([&] { entry = entryOfError(error, connection); });
    }
    if (!entry || entry->native == 0) {
        if (const std::optional<Error> known = errorOfCode(error)) {
            return *known;
        }
    }
    const std::string source = entry && !entry->source.empty() ? entry->source : error.source();
    const std::string found = entry && !entry->description.empty() ? entry->description : error.description();
    const std::string text = withoutSecrets(found, secrets);
    if (!entry && text == error.description()) {
        return error;
    }
    const int number = entry && entry->native != 0 ? entry->native : error.number();
    return {number, source, Explanation{Reason::verbatim, {text}}, entry ? entry->state : std::string()};
}

} // namespace z7::cashflow::ado
