# The golden cases with the program for Windows under Wine. What runs the cases is a program of this machine, because the
# commands go to its shell.
find_program(Z7_NATIVE_CXX NAMES c++ g++ clang++ NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(goldenCases ${CMAKE_CURRENT_BINARY_DIR}/goldenCases)
add_custom_command(
  OUTPUT ${goldenCases}
  COMMAND ${Z7_NATIVE_CXX} -std=c++20 -I${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR}/goldenCases.cpp -o ${goldenCases}
  DEPENDS goldenCases.cpp ProgramFolder.h
  COMMENT "Building what runs the golden cases"
  VERBATIM)
add_custom_target(golden_cases ALL DEPENDS ${goldenCases})

list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "' '" emulator)
set(program ${CMAKE_CURRENT_BINARY_DIR}/z7cf)
file(GENERATE OUTPUT ${program} CONTENT "#!/bin/sh\nexec '${emulator}' '$<TARGET_FILE:z7cf>' \"$@\"\n"
     FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# Left out: failures is about permissions and devices of Linux.
file(GLOB goldenFiles CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/golden/*.golden)
list(FILTER goldenFiles EXCLUDE REGEX "/failures[.]golden$")
foreach(file IN LISTS goldenFiles)
  get_filename_component(name ${file} NAME_WE)
  add_test(NAME host.golden.${name} COMMAND ${goldenCases} ${program} ${file})
endforeach()
# These show names of files.
set_tests_properties(host.golden.tables host.golden.xml PROPERTIES ENVIRONMENT "Z7_GOLDEN_SEPARATOR=\\")

find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME host.console COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/windows/console.py $<TARGET_FILE:z7cf>
                                   ${PROJECT_BINARY_DIR}/wine-window)
set_tests_properties(host.console PROPERTIES RESOURCE_LOCK screen)

z7_test(host_windows windows/wideTextTest.cpp LINK z7::host)
