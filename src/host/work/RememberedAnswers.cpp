#include "host/work/RememberedAnswers.h"

#include "adapters/shared/session/AnswerMemory.h"
#include "adapters/shared/session/PooledConnection.h"
#include "z7cashflow/statements/accountAnswers.h"

#include <memory>

namespace z7::cashflow::host {

RememberedAnswers::RememberedAnswers(Connection& connection)
    : connection_(dynamic_cast<shared::PooledConnection*>(&connection)) {
    if (connection_ != nullptr) {
        connection_->remember(std::make_shared<shared::AnswerMemory>(
            shared::AnswerPolicy{statements::isAccountAnswer, statements::mayChangeAccountAnswers}));
    }
}

RememberedAnswers::~RememberedAnswers() {
    if (connection_ != nullptr) {
        connection_->remember(nullptr);
    }
}

} // namespace z7::cashflow::host
