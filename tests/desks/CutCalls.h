#pragma once

#include "desks/Office.h"

namespace z7::cashflow::desks {

/// The connections of this process through all its ODBC drivers. The program is linked so that the ODBC functions
/// that send requests are intercepted here. When the connections are cut, the open transaction of each session is
/// rolled back, as by a server, and every further request fails with the errors of a driver.
class CutCalls final : public Lines {
public:
    void cutAt(int request, odbc::Cut moment) override;
    [[nodiscard]] bool chooseVictimAt(int request) override;
    bool stopCounting() override;
    /// Whether fetching a row counts as a request, as with drivers that fetch from the server. Off by default.
    static void countFetches(bool count);
};

} // namespace z7::cashflow::desks
