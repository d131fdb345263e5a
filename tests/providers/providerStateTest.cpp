#include "providers/ProviderTest.h"

#include <type_traits>

namespace z7::cashflow::test {
namespace {

class ProviderState : public ProviderTest {};

TEST_F(ProviderState, TheTemporaryTableIsSharedByBothContracts) {
    EXPECT_EQ(world.gl.VoucherTempTable(), "");
    world.gl.VoucherTempTable("t1");
    EXPECT_EQ(world.out.VoucherTempTable(), "t1");
    world.out.VoucherTempTable("t2");
    EXPECT_EQ(world.gl.VoucherTempTable(), "t2");
    EXPECT_EQ(world.statements(), Lines{});
}

TEST_F(ProviderState, TheTemporaryTableBelongsToOneProvider) {
    VoucherProvider other;
    world.gl.VoucherTempTable("t1");
    EXPECT_EQ(other.gl().VoucherTempTable(), "");
}

TEST_F(ProviderState, TheFormerNumberIsTakenWithoutAnAnswer) {
    EXPECT_EQ(world.gl.SetOldVouchNoID(70000), Variant());
    EXPECT_EQ(world.statements(), Lines{});
}

TEST_F(ProviderState, TheLoginOfOneContractServesBothAndTheThread) {
    modPublic::context() = modPublic::Context{};
    const auto first = std::make_shared<FakeLogin>();
    const auto second = std::make_shared<FakeLogin>();
    world.gl.objLogin(first);
    EXPECT_EQ(modPublic::GetLogin(), first);
    world.out.objLogin(second);
    EXPECT_EQ(modPublic::GetLogin(), second);
    EXPECT_EQ(modPublic::context().textLookup, second->texts);
}

TEST_F(ProviderState, CollectionsForHostsAreSeparateAndEmpty) {
    const auto first = world.provider.CreateCashFlowCollection();
    const auto second = world.provider.CreateCashFlowCollection();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->Count(), 0);
    EXPECT_NE(&first->CFStruct(), &second->CFStruct());
    EXPECT_FALSE(first->Changed());
    EXPECT_EQ(world.statements(), Lines{});
}

TEST_F(ProviderState, ContractsAreAbstract) {
    EXPECT_TRUE(std::is_abstract_v<IGlVoucherProvider>);
    EXPECT_TRUE(std::is_abstract_v<IOutVoucherProvider>);
    EXPECT_EQ(&world.provider.gl(), &world.gl);
    EXPECT_EQ(&world.provider.out(), &world.out);
}

} // namespace
} // namespace z7::cashflow::test
