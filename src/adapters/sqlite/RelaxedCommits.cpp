#include "adapters/sqlite/RelaxedCommits.h"

#include "adapters/sqlite/Session.h"
#include "z7cashflow/support/Error.h"

namespace z7::cashflow::sqlite {

RelaxedCommits::RelaxedCommits(Connection& connection) : connection_(connection) {
    connection_.session().waitForDisk(false);
}

RelaxedCommits::~RelaxedCommits() {
    ignoringErrors([this] { finish(); });
}

void RelaxedCommits::finish() {
    if (!finished_) {
        finished_ = true;
        connection_.session().waitForDisk(true);
    }
}

} // namespace z7::cashflow::sqlite
