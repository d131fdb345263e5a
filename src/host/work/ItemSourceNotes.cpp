#include "host/work/ItemSourceNotes.h"

#include "z7cashflow/model/modPublic.h"

namespace z7::cashflow::host {

ItemSourceNotes::ItemSourceNotes() {
    modPublic::context().itemObserver = [this](const CashFlow& row, const ItemSource& source) {
        sources_[&row] = source;
    };
}

ItemSourceNotes::~ItemSourceNotes() { modPublic::context().itemObserver = nullptr; }

} // namespace z7::cashflow::host
