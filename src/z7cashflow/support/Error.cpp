#include "z7cashflow/support/Error.h"

#include <utility>

namespace z7::cashflow {

Error::Error(int number, std::string source, std::string description, std::string sqlState)
    : number_(number), source_(std::move(source)), description_(std::move(description)),
      sqlState_(std::move(sqlState)) {}

Error Error::withSource(std::string source) const {
    Error copy = *this;
    copy.source_ = std::move(source);
    return copy;
}

namespace {

const char* platformText(int number) {
    switch (number) {
    case errors::badArgument:
        return "Invalid procedure call or argument";
    case errors::overflow:
        return "Overflow";
    case errors::badIndex:
        return "Subscript out of range";
    case errors::typeMismatch:
        return "Type mismatch";
    case errors::objectNotSet:
        return "Object variable not set";
    case errors::invalidNull:
        return "Invalid use of Null";
    case errors::keyExists:
        return "This key is already associated with an element of this collection";
    case errors::badFilter:
        return "Arguments are of the wrong type, are out of acceptable range, or conflict";
    case errors::noCurrentRecord:
        return "There is no current record";
    case errors::notUpdatable:
        return "The recordset does not support updating";
    case errors::unknownField:
        return "Item cannot be found in the recordset's fields";
    case errors::objectClosed:
        return "Operation is not allowed when the object is closed";
    case errors::objectOpen:
        return "Operation is not allowed when the object is open";
    case errors::noConnection:
        return "There is no connection to work on";
    default:
        return "Application-defined error";
    }
}

} // namespace

void raisePlatformError(int number, const std::string& detail) {
    std::string text = platformText(number);
    if (!detail.empty()) {
        text += ": " + detail;
    }
    throw Error(number, "Z7CashFlow", std::move(text));
}

} // namespace z7::cashflow
