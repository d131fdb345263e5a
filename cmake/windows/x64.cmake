# Windows with 64 bits.
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(z7_triple x86_64-w64-mingw32)
set(z7_architecture x64)
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
