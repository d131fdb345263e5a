# Windows with 32 bits.
set(CMAKE_SYSTEM_PROCESSOR X86)
set(z7_triple i686-w64-mingw32)
set(z7_architecture x86)
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
