#include "z7cashflow/statements/Text.h"

namespace z7::cashflow::statements {

void Text::appendTo(std::string& out, LiteralPolicy policy, const Place& place) const {
    if (policy == LiteralPolicy::wholeLiterals) {
        requireText(text_, place);
    }
    out += text_;
}

} // namespace z7::cashflow::statements
