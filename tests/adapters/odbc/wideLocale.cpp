#include <clocale>

namespace {

// Wide texts are taken apart by unixODBC's driver manager in the character set of the locale; it has to be set before
// the first call.
[[maybe_unused]] const char* const locale = std::setlocale(LC_ALL, "C.UTF-8");

} // namespace
