#pragma once

#include "adapters/tsql/Rewriting.h"
#include "adapters/tsql/tokens.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::tsql {

/// Parses a batch by recursive descent and writes the text for the embedded database while parsing.
class Parser {
public:
    explicit Parser(std::string_view text) : source_(text) {}
    Rewriting parse();

private:
    /// A table of a "from" with the name by which columns refer to it.
    struct Source {
        std::string alias;             ///< in lower case
        std::vector<TableName> tables; ///< one, or all those of a sub-select
    };
    /// The tables that column names in one select refer to.
    struct Scope {
        std::vector<Source> sources;
        int outer = -1;
    };
    /// What is known about the expression just written.
    struct Expression {
        bool predicate = false;   ///< true or false, not a value
        bool numeric = false;     ///< certainly a number
        bool textLiteral = false; ///< a bare text literal
        int parameter = -1;       ///< the parameter, if it is a bare literal
        std::string qualifier;    ///< of a bare column, in lower case; may be empty
        std::string column;       ///< of a bare column
        std::string castType;     ///< of a cast
        std::size_t end = 0;      ///< length of the output after it
        [[nodiscard]] bool isColumn() const { return !column.empty(); }
    };
    /// A parameter whose column can only be determined when the tables are known.
    struct PendingUse {
        int parameter;
        int scope;
        std::string qualifier;
        std::string column;
    };
    /// A name with several parts, as written.
    struct DottedName {
        std::vector<std::string> parts; ///< without brackets; an omitted part is empty
        std::string_view text;
    };
    /// The parts of a "from" that an update needs.
    struct UpdateSources {
        struct Item {
            TableName table;
            std::string alias; ///< as written; empty if there is none
        };
        std::vector<Item> items;
        std::vector<std::string> conditions; ///< of the joins
    };

    /// One "column = value" of an update.
    struct Assignment {
        std::string column;
        std::string value;
        int parameter; ///< the value's parameter if it is a bare literal, else -1
    };
    /// The properties of a parsed select.
    struct Query {
        std::vector<ResultItem> items;
        std::vector<TableName> tables; ///< of its own "from", including sub-selects there
        std::optional<TableName> into;
        std::string limit;     ///< the "limit" clause for "top"
        bool writable = false; ///< plain columns of one table
    };

    // Tokens (Parser.cpp)
    [[nodiscard]] const Token& token(std::size_t ahead = 0) const;
    [[nodiscard]] bool isWord(std::string_view lower, std::size_t ahead = 0) const;
    [[nodiscard]] bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const;
    [[nodiscard]] bool isName() const;
    bool takeWord(std::string_view lower);
    bool takeSymbol(std::string_view symbol);
    void expectWord(std::string_view lower);
    void expectSymbol(std::string_view symbol);
    [[noreturn]] void refuse() const;
    std::string takeName();
    DottedName takeDottedName();
    TableName tableOf(const DottedName& name);
    TableName takeTable() { return tableOf(takeDottedName()); }
    std::optional<std::string> takeAlias();
    std::string takeInlinedNumber();

    // Output and its bookkeeping (Parser.cpp)
    void write(std::string_view text) { out_.append(text); }
    template <class Routine> std::string captured(Routine&& routine) {
        std::string outside;
        outside.swap(out_);
        routine();
        outside.swap(out_);
        return outside;
    }
    int addParameter(int literal, bool negative);
    void resolveUses();
    void useFor(int parameter, Parameter::Use use, ColumnUse column);
    void beginStep(Step::Kind kind);
    Step& step() { return result_.steps.back(); }
    void finishStep();

    // Statements (Statements.cpp)
    void parseStatement();
    void parseGuarded();
    void parseSelect();
    void parseInsert();
    void parseValues(const TableName& table, const std::vector<std::string>& columns);
    void parseInsertedQuery(const TableName& table, const std::vector<std::string>& columns);
    void parseDelete();
    void parseUpdate();
    std::vector<Assignment> parseAssignments();
    UpdateSources parseUpdateSources();
    [[nodiscard]] UpdateSources::Item takeUpdated(const DottedName& name, UpdateSources& sources);
    void parseDrop();

    // Queries (Queries.cpp)
    Query parseUnion(bool mayGoInto);
    Query parseQuery(bool mayGoInto);
    void parseTop(Query& query);
    void parseItems(Query& query);
    ResultItem parseItem(bool& bare);
    void parseFrom(Query& query);
    bool parseJoin(Query& query);
    void parseSource(Query& query);
    void parseHints();
    void parseGroup(Query& query);
    void parseOrder();
    void parseCondition();
    void openScope();
    void addSource(std::string_view alias, std::vector<TableName> tables);

    // Expressions (Expressions.cpp)
    Expression parseExpression();
    Expression parseAnd();
    Expression parseNot();
    Expression parsePredicate();
    Expression parseRestOfPredicate(Expression left);
    Expression parseComparison(const Expression& left, std::string_view sign);
    Expression parseIn(const Expression& left);
    Expression parseBetween(const Expression& left);
    Expression parseSum();
    Expression parseProduct();
    Expression parseSigned();
    Expression parsePrimary();
    Expression parseParenthesised();
    Expression parseLiteral(bool negative);
    Expression parseNameOrFunction();
    Expression parseFunction(std::string_view name);
    Expression parseCast();
    Expression parseCase();
    Expression valueOnly(Expression expression) const;
    void compare(const Expression& a, const Expression& b);
    void collateLiteral(const Expression& literal);
    std::string parseType();

    /// Counts the nesting depth, which is limited so that no text can exhaust the stack.
    class Nesting;

    Tokens source_;
    std::size_t at_ = 0;
    std::string out_;
    Rewriting result_;
    std::vector<Scope> scopes_;
    int scope_ = -1;
    std::vector<PendingUse> pending_;
    int depth_ = 0;
};

/// One level of nesting in a statement, for as long as it lives.
class Parser::Nesting {
public:
    explicit Nesting(Parser& parser) : parser_(parser) {
        constexpr int deepest = 300;
        if (parser_.depth_ >= deepest) {
            raiseError(TsqlReason::tooDeep);
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
