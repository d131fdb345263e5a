#include "host/work/StableIdentities.h"

#include "z7cashflow/model/modPublic.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace z7::cashflow::host {

StableIdentities::StableIdentities(const workbench::VoucherKey& voucher)
    : former_(std::exchange(modPublic::context().guidSource, {})) {
    modPublic::context().guidSource = [voucher, count = std::uint32_t{0}]() mutable {
        std::array<std::uint8_t, 16> bytes{};
        std::size_t place = 0;
        const auto put = [&](std::uint32_t number) {
            for (unsigned shift = 32; shift > 0;) {
                shift -= 8;
                bytes.at(place++) = static_cast<std::uint8_t>(number >> shift);
            }
        };
        put(static_cast<std::uint32_t>(voucher.year) << 16U | voucher.period);
        put(static_cast<std::uint32_t>(voucher.kind));
        put(static_cast<std::uint32_t>(voucher.number));
        put(++count);
        return std::optional(bytes);
    };
}

StableIdentities::~StableIdentities() { modPublic::context().guidSource = std::move(former_); }

} // namespace z7::cashflow::host
