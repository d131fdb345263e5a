# Cross-compiling for Windows on Debian. The file that includes this one has set z7_triple and z7_architecture.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${z7_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${z7_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${z7_triple}-windres)

# What the programs are linked with, see scripts/lib/windowsDependencies.sh and windowsToolkit.sh, which name the folders by
# their own checksums.
if(NOT Z7_WINDOWS_DEPENDENCIES)
  if(DEFINED ENV{Z7_WINDOWS_CACHE})
    set(cache $ENV{Z7_WINDOWS_CACHE})
  elseif(DEFINED ENV{XDG_CACHE_HOME})
    set(cache $ENV{XDG_CACHE_HOME}/z7cashflow-windows)
  else()
    set(cache $ENV{HOME}/.cache/z7cashflow-windows)
  endif()
  foreach(part Dependencies Toolkit)
    file(SHA256 ${CMAKE_CURRENT_LIST_DIR}/../../scripts/lib/windows${part}.sh recipe)
    string(SUBSTRING ${recipe} 0 16 recipe${part})
  endforeach()
  set(Z7_WINDOWS_DEPENDENCIES ${cache}/${recipeDependencies}/${z7_architecture})
  if(NOT Z7_WINDOWS_TOOLKIT)
    file(REAL_PATH ${cache}/wx-${recipeToolkit}/${z7_architecture} Z7_WINDOWS_TOOLKIT) # as its wx-config has it
  endif()
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES Z7_WINDOWS_DEPENDENCIES Z7_WINDOWS_TOOLKIT)
set(wxWidgets_CONFIG_EXECUTABLE ${Z7_WINDOWS_TOOLKIT}/bin/wx-config) # not this machine's own

# Nothing of this machine's own headers and libraries is found.
set(CMAKE_FIND_ROOT_PATH /usr/${z7_triple} ${Z7_WINDOWS_DEPENDENCIES} ${Z7_WINDOWS_TOOLKIT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_PREFIX_PATH /)
set(ENV{PKG_CONFIG_LIBDIR} ${Z7_WINDOWS_DEPENDENCIES}/lib/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "")

# Tests run under Wine, with its files in the build folder.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine.sh ${CMAKE_BINARY_DIR}/wine)

# Programs and DLLs need nothing but what Windows brings along.
foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT -static)
endforeach()
set(CMAKE_LINK_SEARCH_START_STATIC ON)
set(CMAKE_LINK_SEARCH_END_STATIC ON) # else the compiler's libraries behind one that is named as a file are taken from DLLs
