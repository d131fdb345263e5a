#pragma once

#include "adapters/shared/session/Session.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What the program keeps of one voucher, number 5 of kind 1 in March 2024: its lines, and the rows stored for it.
struct Ledger {
    struct Line {
        std::int16_t number;
        std::string account;
        bool cash;
        double debit;
        double credit;
    };
    std::vector<Line> lines;
    using Row = std::map<std::string, std::string>;
    std::vector<Row> rows; ///< by column, as written in the statement
};

/// A session that answers the statements with which the library stores rows that are handed to it. All sessions share
/// the ledger.
class LedgerSession final : public z7::cashflow::shared::Session {
public:
    LedgerSession(int number, std::shared_ptr<Ledger> ledger) : number_(number), ledger_(std::move(ledger)) {}

    z7::cashflow::shared::Result run(const std::string& statement, bool updatable) override;
    void close() noexcept override {
        if (before_) {
            rollback();
        }
    }
    [[nodiscard]] int number() const noexcept override { return number_; }
    void begin() override { before_ = ledger_->rows; }
    void commit() override { before_.reset(); }
    void rollback() override {
        ledger_->rows = std::move(*before_);
        before_.reset();
    }
    [[nodiscard]] bool inTransaction() const noexcept override { return before_.has_value(); }
    [[nodiscard]] bool isIdle() const noexcept override { return !inTransaction(); }

private:
    int number_;
    std::shared_ptr<Ledger> ledger_;
    std::optional<std::vector<Ledger::Row>> before_; ///< the rows at the beginning of the transaction
};
