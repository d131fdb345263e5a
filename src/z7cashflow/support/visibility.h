#pragma once

/// Z7_PUBLIC_BEGIN and Z7_PUBLIC_END enclose what a header declares for code outside its own library. Shared libraries
/// are compiled with hidden visibility and export only these declarations. The type information of their classes is
/// exported with them, so that an Error can be caught, and a port be found by dynamic_cast, in another library.
#if defined(__GNUC__)
#define Z7_PUBLIC_BEGIN _Pragma("GCC visibility push(default)")
#define Z7_PUBLIC_END _Pragma("GCC visibility pop")
#else
#define Z7_PUBLIC_BEGIN
#define Z7_PUBLIC_END
#endif
