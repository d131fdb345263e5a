#include "com/arguments.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/automation/OwnedVariant.h"

#include <new>

namespace z7::com {

using adapters::automation::Bstr;

void store(BSTR* out, const std::string& text) { *out = Bstr(text).detach(); }

void store(VARIANT_BOOL* out, bool truth) noexcept { *out = truth ? VARIANT_TRUE : VARIANT_FALSE; }

void store(LONG* out, std::int32_t number) noexcept { *out = number; }

void store(SHORT* out, std::int16_t number) noexcept { *out = number; }

void store(BYTE* out, std::uint8_t number) noexcept { *out = number; }

void store(DOUBLE* out, double number) noexcept { *out = number; }

void store(VARIANT* out, const cashflow::Variant& value) { adapters::automation::toAutomation(value, out); }

void store(VARIANT* out, Empty /*value*/) noexcept { VariantInit(out); }

void store(VARIANT* out, const std::vector<std::string>& names) {
    VARIANT array;
    VariantInit(&array);
    array.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(names.size()));
    if (array.parray == nullptr) {
        throw std::bad_alloc();
    }
    array.vt = VT_ARRAY | VT_VARIANT;
    auto owner = adapters::automation::OwnedVariant::owning(array);
    for (LONG i = 0; i < static_cast<LONG>(names.size()); ++i) {
        const adapters::automation::OwnedVariant name(names[static_cast<std::size_t>(i)]);
        if (FAILED(SafeArrayPutElement(array.parray, &i, const_cast<VARIANT*>(&name.get())))) {
            throw std::bad_alloc();
        }
    }
    *out = owner.detach();
}

std::string text(BSTR argument) { return adapters::automation::utf8OfBstr(argument); }

} // namespace z7::com
