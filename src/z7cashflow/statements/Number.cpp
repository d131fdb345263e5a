#include "z7cashflow/statements/Number.h"

#include <array>
#include <charconv>

namespace z7::cashflow::statements {

void Number::appendTo(std::string& out, LiteralPolicy policy, const Place& place) const {
    if (!isText_) {
        std::array<char, 24> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), integer_).ptr;
        out.append(digits.data(), end);
        return;
    }
    if (policy == LiteralPolicy::wholeLiterals) {
        requireNumber(text_, place);
    }
    out += text_;
}

void FilterNumber::appendTo(std::string& out, LiteralPolicy policy, const Place& place) const {
    if (!text_.empty()) { // a condition without a number is the record set's to refuse
        Number(text_).appendTo(out, policy, place);
    }
}

} // namespace z7::cashflow::statements
