# Installs the built project into a fresh folder, then builds and runs projects that know nothing but the install: one
# that looks at all of it, and the examples, whose output stands in docs/embedding.md. The first uses the static libraries,
# the examples and the build without CMake use the shared ones if there are any.
#   cmake -D BUILD=<build folder> -D WORK=<folder to use> -D GENERATOR= -D COMPILER= -D BUILD_TYPE= -D PYTHON=
#         -P consumer.cmake

file(REMOVE_RECURSE ${WORK})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  if(NOT code EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    message("${text}")
    message(FATAL_ERROR "${command} ended with ${code}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/install)
# The install must do without this source tree, so it is moved before it is used.
file(RENAME ${WORK}/install ${WORK}/moved)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/../consumer -B ${WORK}/build -G ${GENERATOR}
    -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D CMAKE_PREFIX_PATH=${WORK}/moved
    -D Z7CashFlow_USE_STATIC_LIBS=ON)
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${WORK}/build/consumer)

get_filename_component(source ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
run(${CMAKE_COMMAND} -S ${source}/examples -B ${WORK}/examples -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${COMPILER}
    -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D "CMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Werror"
    -D CMAKE_PREFIX_PATH=${WORK}/moved)
run(${CMAKE_COMMAND} --build ${WORK}/examples)
run(${PYTHON} ${source}/scripts/check_examples.py ${WORK}/examples ${WORK}/moved/bin/z7cf)

# The same without CMake.
file(GLOB_RECURSE package ${WORK}/moved/z7cashflow-sqlite.pc)
cmake_path(GET package PARENT_PATH packageFolder)
cmake_path(GET packageFolder PARENT_PATH libraryFolder)
find_program(pkgConfig pkg-config)
if(pkgConfig)
  set(ENV{PKG_CONFIG_PATH} ${packageFolder})
  set(programs outside own-database)
  set(databases sqlite databases)
  foreach(program database IN ZIP_LISTS programs databases)
    execute_process(COMMAND ${pkgConfig} --static --cflags --libs z7cashflow-${database} z7cashflow-texts
                    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${flags}")
    file(GLOB sources ${source}/examples/${program}/*.cpp)
    run(${COMPILER} -std=c++20 -I${source}/examples ${sources} -o ${WORK}/${program} ${flags})
  endforeach()
endif()

# The programs find the shared libraries where they were linked.
if(EXISTS ${libraryFolder}/libz7cashflow.so)
  set(ENV{LD_LIBRARY_PATH} ${libraryFolder})
  foreach(program examples/host outside)
    if(NOT EXISTS ${WORK}/${program})
      continue() # no pkg-config
    endif()
    execute_process(COMMAND ldd ${WORK}/${program} OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
    if(NOT needed MATCHES "libz7cashflow\\.so\\.[0-9]+ => ${libraryFolder}/")
      message(FATAL_ERROR "${program} is not linked with the shared library:\n${needed}")
    endif()
  endforeach()
endif()

file(GLOB_RECURSE configs ${WORK}/moved/*.cmake)
foreach(config ${configs})
  file(READ ${config} text)
  string(FIND "${text}" "${source}/" position)
  if(NOT position EQUAL -1)
    message(FATAL_ERROR "${config} names the source tree ${source}")
  endif()
endforeach()
