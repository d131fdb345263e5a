#pragma once

#include "adapters/tsql/Rewriting.h"

#include <functional>
#include <string>
#include <vector>

/// What a session of the embedded database has to do as a whole or not at all, whichever way it is reached.
namespace z7::cashflow::tsql {

/// How a session runs a text of the embedded database that gives no rows. An Error says that it was refused.
struct TextRunner {
    using Run = std::function<void(const std::string& sql)>;
    Run run;
    Run takeBack; ///< for what takes a failure back; its own errors are ignored, for the first one is the one to tell
};

/// Begins a transaction that may write to the account from the start. If another session is writing, its error comes
/// out and no transaction is open.
void beginTransaction(const TextRunner& runner);

/// Makes the table that a step of the kind queryInto names and fills it; after an error it is not there. "columns" are
/// the declarations of its columns. "insert" runs the text that fills it, which has the step's parameters.
void fillNewTable(const Step& step, const std::vector<std::string>& columns, const TextRunner& runner,
                  const TextRunner::Run& insert);

} // namespace z7::cashflow::tsql
