// COM for the thread that runs the tests, and the check that every test releases the automation objects that it uses.

#include "standins/AutomationObject.h"

#include <gtest/gtest.h>

namespace z7::cashflow::test {
namespace {

class Apartment final : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK); }
    void TearDown() override { CoUninitialize(); }
};

class LeakCheck final : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo&) override { before_ = AutomationObject::liveObjects(); }
    void OnTestEnd(const ::testing::TestInfo&) override {
        EXPECT_EQ(AutomationObject::liveObjects(), before_) << "automation objects are not released";
    }
    long before_ = 0;
};

const auto* const apartment = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new LeakCheck); // owned by the list
    return ::testing::AddGlobalTestEnvironment(new Apartment);             // owned by the program
}();

} // namespace
} // namespace z7::cashflow::test
