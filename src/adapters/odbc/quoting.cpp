#include "adapters/odbc/quoting.h"

namespace z7::cashflow::odbc {
namespace {

std::string enclosed(std::string_view text, const char* open, char close) {
    std::string quoted = open;
    for (const char c : text) {
        quoted += c;
        if (c == close) {
            quoted += c;
        }
    }
    return quoted + close;
}

} // namespace

std::string serverText(std::string_view text) { return enclosed(text, "N'", '\''); }

std::string serverName(std::string_view name) { return enclosed(name, "[", ']'); }

} // namespace z7::cashflow::odbc
