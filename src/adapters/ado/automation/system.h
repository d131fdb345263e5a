#pragma once

/// \file
/// The system's headers of OLE Automation. Everything that uses them includes this header and not theirs, because
/// windows.h defines macros with the names of our own types.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif

#include <windows.h>

#include <ole2.h>

#undef MessageBox // a port
#undef small      // a name that anyone may use
