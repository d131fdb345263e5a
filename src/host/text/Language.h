#pragma once

#include "texts/Language.h"

namespace z7::cashflow::host {

using Language = texts::Language;
using texts::readLanguage;

/// The language of the environment: Chinese if the first non-empty one of LC_ALL, LC_MESSAGES and LANG begins with
/// "zh"; without any of them the language of the system where it has one, otherwise English.
[[nodiscard]] Language languageOfEnvironment();

} // namespace z7::cashflow::host
