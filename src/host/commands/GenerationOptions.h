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
    /// Adds the options to a command, with their help in the given language.
    void declare(CLI::App& command, Language language);
    /// Saves a voucher: its stored rows again or, with these options, newly generated ones.
    [[nodiscard]] workbench::VoucherResult save(workbench::Allotment& allotment, workbench::Assignment& assignment,
                                                const workbench::VoucherKey& key) const {
        return regenerate_ ? assignment.regenerate(key, keepItems_) : allotment.allot(key);
    }
    /// The options that were given, as written on the command line, each preceded by a blank.
    [[nodiscard]] std::string words() const {
        return std::string(regenerate_ ? " --regenerate" : "") + (keepItems_ ? " --keep-items" : "");
    }

private:
    bool regenerate_ = false;
    bool keepItems_ = false;
};

} // namespace z7::cashflow::host
