#pragma once

#include "adapters/tsql/Rewriting.h"
#include "z7cashflow/support/visibility.h"

#include <functional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

/// Operations of a session of the embedded database that must succeed or fail as a whole, whichever adapter is
/// used.
namespace z7::cashflow::tsql {

/// Runs texts without results in the embedded database. An Error means that the text was refused.
struct TextRunner {
    using Run = std::function<void(const std::string& sql)>;
    Run run;
    Run takeBack; ///< for undoing a failure; its own errors are ignored, because the first one is the one to report
};

/// Begins a transaction that may write to the account immediately. If another session is writing, its error passes
/// through and no transaction is open.
void beginTransaction(const TextRunner& runner);

/// Creates the table named by a step of the kind queryInto and fills it; after an error the table does not exist.
/// "columns" are the declarations of its columns. "insert" runs the text that fills it, with the step's parameters.
void fillNewTable(const Step& step, const std::vector<std::string>& columns, const TextRunner& runner,
                  const TextRunner::Run& insert);

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
