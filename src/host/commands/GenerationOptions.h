#pragma once

#include "host/text/Language.h"
#include "workbench/changes/Assignment.h"

#include <string>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// The options --regenerate and --keep-items of commands that save rows.
class GenerationOptions {
public:
    /// Adds the options to a command, with their help in a language.
    void declare(CLI::App& command, Language language);
    /// Saves a voucher as the options say: what is stored anew, or generated rows in its place.
    [[nodiscard]] workbench::VoucherResult save(workbench::Allotment& allotment, workbench::Assignment& assignment,
                                                const workbench::VoucherKey& key) const {
        return regenerate_ ? assignment.regenerate(key, keepItems_) : allotment.allot(key);
    }
    /// The given options as they are written, each with a blank before it.
    [[nodiscard]] std::string words() const {
        return std::string(regenerate_ ? " --regenerate" : "") + (keepItems_ ? " --keep-items" : "");
    }

private:
    bool regenerate_ = false;
    bool keepItems_ = false;
};

} // namespace z7::cashflow::host
