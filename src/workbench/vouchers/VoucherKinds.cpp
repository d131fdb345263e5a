#include "workbench/vouchers/VoucherKinds.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::workbench {

namespace {

std::string withoutBlanks(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Whether a key written with this sign would be parsed as one.
bool canBeWritten(const std::string& sign) {
    return sign.find('/') == std::string::npos && sign.find_first_not_of("0123456789") != std::string::npos;
}

} // namespace

VoucherKinds::VoucherKinds(std::vector<Kind> kinds) : kinds_(std::move(kinds)) {
    for (Kind& kind : kinds_) {
        kind.sign = withoutBlanks(kind.sign);
    }
    std::stable_sort(kinds_.begin(), kinds_.end(), [](const Kind& a, const Kind& b) { return a.number < b.number; });
    const auto repeated =
        std::unique(kinds_.begin(), kinds_.end(), [](const Kind& a, const Kind& b) { return a.number == b.number; });
    kinds_.erase(repeated, kinds_.end());
}

VoucherKinds VoucherKinds::read(Connection& connection) {
    std::vector<Kind> kinds;
    const auto records = connection.Execute("select isignseq,csign from dsign order by isignseq");
    for (; !records->atEnd(); records->MoveNext()) {
        kinds.push_back({toInt16(records->Fields().Item("isignseq")), toTextOrEmpty(records->Fields().Item("csign"))});
    }
    return VoucherKinds(std::move(kinds));
}

std::string VoucherKinds::sign(std::int16_t kind) const {
    const auto found =
        std::find_if(kinds_.begin(), kinds_.end(), [kind](const Kind& each) { return each.number == kind; });
    return found == kinds_.end() ? std::string() : found->sign;
}

std::vector<std::int16_t> VoucherKinds::kindsOf(const std::string& sign) const {
    std::vector<std::int16_t> numbers;
    for (const Kind& kind : kinds_) {
        if (!sign.empty() && kind.sign == sign) {
            numbers.push_back(kind.number);
        }
    }
    return numbers;
}

std::string VoucherKinds::keyText(const VoucherKey& key) const {
    const std::string own = sign(key.kind);
    if (!canBeWritten(own) || kindsOf(own).size() != 1) {
        return voucherKeyText(key);
    }
    return std::to_string(key.year) + '/' + std::to_string(key.period) + '/' + own + '/' + std::to_string(key.number);
}

std::optional<VoucherKey> VoucherKinds::resolved(const WrittenVoucherKey& written) const {
    VoucherKey key = written.key;
    if (!written.sign.empty()) {
        const auto kinds = kindsOf(written.sign);
        if (kinds.size() != 1) {
            return std::nullopt;
        }
        key.kind = kinds.front();
    }
    return key;
}

} // namespace z7::cashflow::workbench
