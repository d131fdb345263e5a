#pragma once

#include "adapters/odbc/nativeCalls.h"
#include "z7cashflow/support/Variant.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace z7::cashflow::odbc {

/// The values of one execution, bound to a statement's parameters. It must live until the statement has run.
class Parameters {
public:
    explicit Parameters(const std::vector<Variant>& values);
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;
    ~Parameters();

    /// False if the driver refuses a value.
    [[nodiscard]] bool bind(Handle statement);

private:
    struct Cell;

    std::size_t count_;
    std::unique_ptr<Cell[]> cells_; ///< the driver holds addresses of the cells
};

} // namespace z7::cashflow::odbc
