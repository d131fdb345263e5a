#pragma once

#include "z7cashflow/ports/PickList.h"

#include <memory>
#include <utility>

namespace z7::cashflow::wx {

class StateLines;

/// The pop-up from which one row is chosen: an entry that filters the list below it. The entry keeps the focus; the
/// arrow and page keys move in the list.
class PickWindow final : public PickList {
public:
    explicit PickWindow(std::shared_ptr<StateLines> states) : states_(std::move(states)) {}
    std::optional<std::size_t> pick(const std::string& title, const std::vector<PickColumn>& columns,
                                    const std::vector<std::vector<std::string>>& rows) override;

private:
    std::shared_ptr<StateLines> states_; ///< may hold the window system
};

} // namespace z7::cashflow::wx
