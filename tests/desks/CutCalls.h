#pragma once

#include "desks/Office.h"

namespace z7::cashflow::desks {

/// The lines of this process to all its ODBC drivers. The program is linked so that the ODBC calls by which requests go
/// out pass through here on their way to the driver manager. When the lines are cut each session's open transaction is
/// rolled back, as a server does, and every further request on them fails as drivers tell it.
class CutCalls final : public Lines {
public:
    void cutAt(int request, odbc::Cut moment) override;
    [[nodiscard]] bool chooseVictimAt(int request) override;
    bool stopCounting() override;
    /// Whether a row that is fetched counts as a request, as with drivers that fetch from the server. Off by default.
    static void countFetches(bool count);
};

} // namespace z7::cashflow::desks
