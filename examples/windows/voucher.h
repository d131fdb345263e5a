#pragma once

#include <oaidl.h>

#include <ostream>

/// Generates, checks and stores the rows of the voucher 2013/1/1/6, then writes the error of a wrong sum.
/// login is the suite's login object, connection an open ADO connection; both remain the caller's, whose thread has
/// opened COM as a single-threaded apartment.
void allocateVoucher(IDispatch* login, IDispatch* connection, std::wostream& out);
