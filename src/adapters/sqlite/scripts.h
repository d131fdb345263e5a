#pragma once

/// The scripts of schema/embedded, named after their files.
namespace z7::cashflow::sqlite::scripts {

extern const char* const accountTables;
extern const char* const accountViews;
extern const char* const logTables;
extern const char* const systemTables;

} // namespace z7::cashflow::sqlite::scripts
