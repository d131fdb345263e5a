// What the leak check of the address sanitizer passes over in this program. The window toolkit keeps its lists of stock
// colours and fonts when it cannot be started for lack of a screen, once for each attempt; none of it is ours.

// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): the sanitizer's name
extern "C" const char* __lsan_default_suppressions() { return "leak:wxInitializeStockLists\n"; }
