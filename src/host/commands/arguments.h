#pragma once

#include "host/Language.h"
#include "host/Session.h"
#include "host/VoucherList.h"

#include <cstdint>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// Arguments that several commands take, with what is done to read them. The values are read after parsing.

/// The database file of an account.
struct DatabaseArgument {
    std::string file;
    void declare(CLI::App& command, Language language);
};

/// One voucher of an account.
struct VoucherArgument {
    DatabaseArgument database;
    std::string text;
    void declare(CLI::App& command, Language language);
    /// Failure (usage) if the text is no voucher key.
    [[nodiscard]] VoucherKey key() const;
    /// The voucher in an open session of its year. Failure (refused) if it is not there.
    [[nodiscard]] VoucherHead find(Session& session) const;
};

/// An accounting year or one period of it.
struct PeriodArgument {
    DatabaseArgument database;
    std::int64_t yearNumber = 0;
    std::optional<std::int64_t> periodNumber;
    void declare(CLI::App& command, Language language);
    /// Failure (usage) if it is no year from 1 to 9999.
    [[nodiscard]] std::int16_t year() const;
    /// Failure (usage) if it is no period from 0 to 255.
    [[nodiscard]] std::optional<std::uint8_t> period() const;
};

} // namespace z7::cashflow::host
