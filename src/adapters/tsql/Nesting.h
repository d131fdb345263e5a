#pragma once

#include "adapters/tsql/Parser.h"

namespace z7::cashflow::tsql {

/// One level of nesting in a statement, for as long as it lives.
class Parser::Nesting {
public:
    explicit Nesting(Parser& parser) : parser_(parser) {
        constexpr int deepest = 300;
        if (parser_.depth_ >= deepest) {
            raiseError(errors::tooDeep, "Some part of your SQL statement is nested too deeply.");
        }
        ++parser_.depth_;
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --parser_.depth_; }

private:
    Parser& parser_;
};

} // namespace z7::cashflow::tsql
