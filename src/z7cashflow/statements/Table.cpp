#include "z7cashflow/statements/Table.h"

namespace z7::cashflow::statements {

void Table::appendTo(std::string& out, LiteralPolicy policy, const Place& place) const {
    if (policy == LiteralPolicy::wholeLiterals) {
        requireTableName(name_, place);
    }
    out += name_;
}

} // namespace z7::cashflow::statements
