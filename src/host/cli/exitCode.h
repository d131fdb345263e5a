#pragma once

namespace z7::cashflow::host {

/// Exit codes of the program.
namespace exit_code {
inline constexpr int done = 0;
inline constexpr int refused = 1;      ///< a voucher was refused, does not match its rows, or does not exist
inline constexpr int usage = 2;        ///< the command line or a file that it names is wrong
inline constexpr int database = 3;     ///< the database, the disk or the output fails
inline constexpr int signalBase = 128; ///< plus the number of the signal that ended the run: 130, 143
inline constexpr int readerGone =
    141; ///< the reader of the output went away; elsewhere the signal SIGPIPE ends such a run
} // namespace exit_code

} // namespace z7::cashflow::host
