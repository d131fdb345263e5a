#pragma once

#include <oaidl.h>

#include <string>

namespace z7::test {

/// A type library as text, one line for each interface, member and class: numbers, kinds, parameters with their types,
/// directions and default values, identifiers. Two libraries with the same text serve the same clients.
std::string typeLibraryText(ITypeLib& library);

} // namespace z7::test
