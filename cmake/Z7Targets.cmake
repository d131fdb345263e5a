# What every target of this project has in common: the language level, the warnings, the sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

find_program(Z7_CCACHE ccache)
if(Z7_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${Z7_CCACHE})
endif()

add_library(z7_options INTERFACE)
target_compile_features(z7_options INTERFACE cxx_std_20)
target_compile_options(z7_options INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${Z7_WARNINGS_AS_ERRORS}>:-Werror>)
# g++ 12 falsely reports overlapping copies in std::string's own assignments.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(z7_options INTERFACE -Wno-restrict)
endif()
if(Z7_SANITIZE)
  target_compile_options(z7_options INTERFACE -fsanitize=${Z7_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(z7_options INTERFACE -fsanitize=${Z7_SANITIZE})
endif()

# What the shared libraries are called. The number of their soname counts binary interfaces and is independent of the version:
# 1 is the first one. A version that removes or changes anything between Z7_PUBLIC_BEGIN and Z7_PUBLIC_END takes the next.
set(z7_soname 1)

# For packages: the hardening that Debian expects, and no folder of the build in what is compiled, so that a build in another
# folder has the same bytes. Only code that is compiled with optimisation can take these options.
add_library(z7_package_options INTERFACE)
if(Z7_PACKAGES)
  target_compile_options(z7_package_options INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
    -fstack-protector-strong $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  target_link_options(z7_package_options INTERFACE LINKER:-z,relro LINKER:-z,now)
endif()

# z7_library(NAME sources... [LINK public libraries...] [PRIVATE_LINK private libraries...] [COMPONENT name])
# A static library NAME with the alias z7::NAME, whose headers are included as <path below src>. COMPONENT gives the component
# of the installed package that it belongs to; with BUILD_SHARED_LIBS it is also linked as the shared library z7_NAME_shared,
# from the same objects. The tests and z7cf always use the static one, because they need its internals.
function(z7_library name)
  cmake_parse_arguments(ARG "" "COMPONENT" "LINK;PRIVATE_LINK" ${ARGN})
  add_library(z7_${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
  add_library(z7::${name} ALIAS z7_${name})
  set_target_properties(z7_${name} PROPERTIES EXPORT_NAME ${name})
  target_include_directories(z7_${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                                               $<INSTALL_INTERFACE:include>)
  target_compile_features(z7_${name} PUBLIC cxx_std_20)
  target_link_libraries(z7_${name} PUBLIC ${ARG_LINK} PRIVATE $<BUILD_INTERFACE:z7_options>
                        $<BUILD_INTERFACE:z7_package_options> ${ARG_PRIVATE_LINK})
  if(ARG_COMPONENT)
    string(REGEX REPLACE "-cashflow$" "" file z7cashflow-${ARG_COMPONENT})
    set_target_properties(z7_${name} PROPERTIES OUTPUT_NAME ${file})
    if(BUILD_SHARED_LIBS)
      set_target_properties(z7_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
      z7_shared_library(${name} ${file} LINK ${ARG_LINK} PRIVATE_LINK ${ARG_PRIVATE_LINK})
    endif()
  endif()
endfunction()

# z7_shared_library(NAME FILE LINK ... PRIVATE_LINK ...): the shared library of a component, from the objects of the static one.
function(z7_shared_library name file)
  cmake_parse_arguments(ARG "" "" "LINK;PRIVATE_LINK" ${ARGN})
  list(TRANSFORM ARG_LINK REPLACE "^z7::(.+)$" "z7_\\1_shared")
  set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  add_library(z7_${name}_shared SHARED $<TARGET_OBJECTS:z7_${name}>)
  set_target_properties(z7_${name}_shared PROPERTIES
    EXPORT_NAME ${name} OUTPUT_NAME ${file} LINKER_LANGUAGE CXX LINK_DEPENDS ${exports}
    VERSION ${z7_soname}.${PROJECT_VERSION} SOVERSION ${z7_soname}
    SKIP_BUILD_RPATH ON) # an install would only blank the path of the build, and its length would remain
  target_include_directories(z7_${name}_shared INTERFACE $<INSTALL_INTERFACE:include>)
  target_compile_features(z7_${name}_shared INTERFACE cxx_std_20)
  target_link_libraries(z7_${name}_shared PUBLIC ${ARG_LINK} PRIVATE $<BUILD_INTERFACE:z7_options>
                        $<BUILD_INTERFACE:z7_package_options> ${ARG_PRIVATE_LINK})
  target_link_options(z7_${name}_shared PRIVATE LINKER:--version-script=${exports} LINKER:--no-undefined LINKER:--as-needed)
endfunction()

# z7_quick_build(TARGET): compiles without optimisation, whatever the build type. For code that does little work itself, such as
# tests: they build in half the time, and the library under test is still compiled as the build type says.
function(z7_quick_build target)
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-O0 $<$<NOT:$<BOOL:${WIN32}>>:-g1>>)
endfunction()

# z7_embed_scripts(ADAPTER FOLDER result) embeds the scripts of schema/FOLDER in an adapter, so that no files are read at run time.
# The result is the source file that contains them.
function(z7_embed_scripts adapter folder result)
  set(scripts account_tables.sql account_views.sql log_tables.sql system_tables.sql)
  list(TRANSFORM scripts PREPEND ${PROJECT_SOURCE_DIR}/schema/${folder}/)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/scripts.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} "-DSCRIPTS=${scripts}" -DADAPTER=${adapter} -DOUTPUT=${output} -P
            ${PROJECT_SOURCE_DIR}/cmake/embedScripts.cmake
    DEPENDS ${scripts} ${PROJECT_SOURCE_DIR}/cmake/embedScripts.cmake
    VERBATIM)
  set(${result} ${output} PARENT_SCOPE)
endfunction()

# z7_test(NAME sources... [LINK libraries...])
# A GoogleTest program whose cases are registered with ctest one by one as NAME.Suite.Case; for Windows the program is one
# test called NAME, because starting each case under Wine takes longer than running it.
function(z7_test name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(test_${name} ${ARG_UNPARSED_ARGUMENTS})
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE z7_options ${ARG_LINK} GTest::gmock GTest::gtest_main)
  z7_quick_build(test_${name})
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 900)
    return()
  endif()
  gtest_discover_tests(test_${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 900)
endfunction()
