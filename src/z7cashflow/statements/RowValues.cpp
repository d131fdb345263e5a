#include "z7cashflow/statements/RowValues.h"

namespace z7::cashflow::statements {

void RowValues::separate() {
    if (begun_) {
        text_ += ',';
    }
    begun_ = true;
}

void RowValues::addNull() {
    separate();
    text_ += "Null";
}

void RowValues::addText(std::string_view field, std::string_view value) {
    if (policy_ == LiteralPolicy::wholeLiterals) {
        requireText(value, {statement_, field});
    }
    separate();
    text_ += "N'";
    text_ += value;
    text_ += '\'';
}

void RowValues::addNumber(std::string_view field, std::string_view value) {
    if (policy_ == LiteralPolicy::wholeLiterals) {
        requireNumber(value, {statement_, field});
    }
    separate();
    text_ += value;
}

void RowValues::appendTo(std::string& out, LiteralPolicy /*policy*/, const Place& /*place*/) const { out += text_; }

} // namespace z7::cashflow::statements
