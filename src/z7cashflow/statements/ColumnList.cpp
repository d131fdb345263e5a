#include "z7cashflow/statements/ColumnList.h"

namespace z7::cashflow::statements {

void ColumnList::append(std::string_view qualifier, std::string_view name) {
    if (policy_ == LiteralPolicy::wholeLiterals) {
        requireColumnName(name, {statement_, "column"});
    }
    if (begun_) {
        text_ += ',';
    }
    begun_ = true;
    text_ += qualifier;
    text_ += name;
}

void ColumnList::add(std::string_view name) { append({}, name); }

void ColumnList::addOfAccount(std::string_view name) { append(" code.", name); }

void ColumnList::appendTo(std::string& out, LiteralPolicy /*policy*/, const Place& /*place*/) const { out += text_; }

} // namespace z7::cashflow::statements
