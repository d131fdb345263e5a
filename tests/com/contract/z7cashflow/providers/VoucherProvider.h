#pragma once

#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/IOutVoucherProvider.h"

#include <memory>

/// \file
/// Stands in place of the library's header of this name: tests that are compiled with it drive the COM class
/// VoucherProvider and not the library's. A namespace of its own keeps the two classes apart.
namespace z7::cashflow {
inline namespace through_com {

/// The provider of a host: every call goes by name, through the type library, to an object of the COM class.
/// Connections are handed over as ADO objects over the test's own, arguments by reference as variables of a script.
class VoucherProvider final {
public:
    VoucherProvider();
    ~VoucherProvider();
    VoucherProvider(const VoucherProvider&) = delete;
    VoucherProvider& operator=(const VoucherProvider&) = delete;

    [[nodiscard]] IGlVoucherProvider& gl() noexcept;
    [[nodiscard]] IOutVoucherProvider& out() noexcept;
    [[nodiscard]] std::shared_ptr<CashFlowCollection> CreateCashFlowCollection();
    void IGlVoucherProvider_bFromDraft(bool value);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace through_com
} // namespace z7::cashflow
