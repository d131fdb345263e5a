#pragma once

#include "doubles/ScriptedDatabase.h"
#include "z7cashflow/ports/ConnectionFactory.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace z7::cashflow::test {

/// Creates sessions of a scripted database, named con1, con2 and so on.
class ScriptedConnectionFactory final : public ConnectionFactory {
public:
    explicit ScriptedConnectionFactory(ScriptedDatabase& database) : database_(database) {}
    [[nodiscard]] std::unique_ptr<Connection> create(const std::string& connectionString) override {
        EXPECT_EQ(connectionString, ScriptedDatabase::connectionString());
        return database_.newConnection("con" + std::to_string(++made));
    }
    int made = 0;

private:
    ScriptedDatabase& database_;
};

} // namespace z7::cashflow::test
