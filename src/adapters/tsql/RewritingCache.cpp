#include "adapters/tsql/RewritingCache.h"

namespace z7::cashflow::tsql {
namespace {

constexpr std::size_t longestKeptText = std::size_t{64} * 1024;

} // namespace

bool isWorthKeeping(std::string_view text, const Rewriting& rewriting) {
    // Tables of tempdb exist for one voucher only.
    return text.size() <= longestKeptText &&
           std::none_of(rewriting.steps.begin(), rewriting.steps.end(), [](const Step& step) {
               return step.kind == Step::Kind::drop || step.kind == Step::Kind::queryInto ||
                      std::any_of(step.tables.begin(), step.tables.end(),
                                  [](const TableName& table) { return table.place == TableName::Place::temp; });
           });
}

} // namespace z7::cashflow::tsql
