#pragma once

#include "adapters/ado/automation/Dispatch.h"

#include <cstdint>
#include <string>

namespace z7::cashflow::ado {

/// A text that an object of the host returns; a number counts as its decimal text. Error 13, which names the member,
/// for everything else, null included.
[[nodiscard]] std::string hostText(const adapters::automation::OwnedVariant& value, const wchar_t* member);

/// A whole number of 32 bits that an object of the host returns, as a number of any type or as a text of digits. Error
/// 13, which names the member, for everything else.
[[nodiscard]] std::int32_t wholeNumber(const adapters::automation::OwnedVariant& value, const wchar_t* member);

/// Error 91, which names the object, if there is none.
void requireObject(const adapters::automation::Dispatch& object, const wchar_t* name);

} // namespace z7::cashflow::ado
