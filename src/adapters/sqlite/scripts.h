#pragma once

/// The scripts of schema/embedded, named after their files.
namespace z7::cashflow::sqlite::scripts {

extern const char* const account_tables;
extern const char* const account_views;
extern const char* const log_tables;
extern const char* const system_tables;

} // namespace z7::cashflow::sqlite::scripts
