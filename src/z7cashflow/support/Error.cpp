#include "z7cashflow/support/Error.h"

#include <utility>

namespace z7::cashflow {

Error::Error(int number, std::string source, std::string description, std::string sqlState)
    : number_(number), source_(std::move(source)), description_(std::move(description)), sqlState_(std::move(sqlState)),
      hasOwnText_(true) {}

Error::Error(int number, std::string source, std::string description, Explanation why)
    : number_(number), source_(std::move(source)), description_(std::move(description)), why_(std::move(why)),
      hasOwnText_(true) {}

Error::Error(std::string source, Explanation why, std::string sqlState)
    : number_(why.reason.entry().number), source_(std::move(source)), description_(englishText(why)),
      sqlState_(std::move(sqlState)), why_(std::move(why)), hasOwnText_(false) {}

Error::Error(int number, std::string source, Explanation why, std::string sqlState)
    : number_(number), source_(std::move(source)), description_(englishText(why)), sqlState_(std::move(sqlState)),
      why_(std::move(why)), hasOwnText_(false) {}

Error Error::withSource(std::string source) const {
    Error copy = *this;
    copy.source_ = std::move(source);
    return copy;
}

Explanation Error::asCause() const { return hasOwnText_ ? Explanation{Reason::verbatim, {description_}} : why_; }

void raisePlatformError(ReasonId reason, std::vector<std::string> arguments) {
    throw Error("Z7CashFlow", {reason, std::move(arguments)});
}

} // namespace z7::cashflow
