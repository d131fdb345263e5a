// Statements: their shape contains every literal, and the rewritten statement refers only to those.

#include "adapters/tsql/Rewriting.h"
#include "adapters/tsql/Shape.h"
#include "fuzz/target.h"
#include "z7cashflow/support/Error.h"

#include <cstdint>
#include <optional>
#include <string>

namespace z7::cashflow::fuzz {
namespace {

using tsql::Literal;
using tsql::Rewriting;
using tsql::Shape;
using tsql::Step;

std::optional<Shape> shapeOrNothing(std::string_view statement) {
    try {
        return tsql::shapeOf(statement);
    } catch (const Error& error) {
        require(!error.description().empty(), "a refusal says why");
        return std::nullopt;
    }
}

std::optional<Rewriting> rewritingOrNothing(std::string_view statement) {
    try {
        return tsql::rewrite(statement);
    } catch (const Error& error) {
        require(!error.description().empty(), "a refusal says why");
        return std::nullopt;
    }
}

// The statement with other literals in place of its own; empty if two of them are adjacent and would become one.
std::optional<std::string> withOtherLiterals(std::string_view statement, const Shape& shape) {
    std::string other;
    std::size_t copied = 0;
    for (const Literal& literal : shape.literals) {
        const auto at = static_cast<std::size_t>(literal.source.data() - statement.data());
        if (at == copied && copied != 0) {
            return std::nullopt;
        }
        other += statement.substr(copied, at - copied);
        if (literal.kind == Literal::Kind::number) {
            other += literal.source.front() == '.' ? ".5e1" : "7.5e1";
        } else {
            other += literal.source.front() == '\'' ? "'x'" : "N'x''y'";
        }
        copied = at + literal.source.size();
    }
    return other + std::string(statement.substr(copied));
}

void requireShape(std::string_view statement, const Shape& shape) {
    const char* end = statement.data() + statement.size();
    const char* at = statement.data();
    for (const Literal& literal : shape.literals) {
        require(literal.source.data() >= at && literal.source.data() + literal.source.size() <= end,
                "literals stand in the statement, one behind the other");
        at = literal.source.data() + literal.source.size();
        require(literal.value().size() <= literal.source.size(), "a literal's value is no longer than the literal");
    }
    if (const auto other = withOtherLiterals(statement, shape)) {
        const Shape otherShape = tsql::shapeOf(*other);
        require(otherShape.key == shape.key && otherShape.literals.size() == shape.literals.size(),
                "statements that differ in their literals alone have one shape");
    }
}

void requireSteps(const Shape& shape, const Rewriting& rewriting) {
    const auto isLiteral = [&](int literal) {
        return literal >= 0 && static_cast<std::size_t>(literal) < shape.literals.size();
    };
    for (const int literal : rewriting.inlined) {
        require(isLiteral(literal), "what is part of the text is a literal of the statement");
    }
    for (const Step& step : rewriting.steps) {
        require(!step.sql.empty(), "a step has a text");
        for (const tsql::Parameter& parameter : step.parameters) {
            require(isLiteral(parameter.literal), "a parameter is a literal of the statement");
        }
        for (const tsql::ResultItem& item : step.items) {
            require(item.parameter < static_cast<int>(step.parameters.size()), "a bare literal is a parameter");
        }
    }
}

void run(std::string_view statement) {
    const auto shape = shapeOrNothing(statement);
    const auto rewriting = rewritingOrNothing(statement);
    if (shape) {
        requireShape(statement, *shape);
    }
    require(shape || !rewriting, "what has no shape is not understood");
    if (rewriting) {
        requireSteps(*shape, *rewriting);
    }
}

} // namespace
} // namespace z7::cashflow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    z7::cashflow::fuzz::run(z7::cashflow::fuzz::textOf(data, size));
    return 0;
}
