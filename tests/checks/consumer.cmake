# Installs the built project into a fresh folder, then builds and runs a project that knows nothing but the install.
#   cmake -D BUILD=<build folder> -D WORK=<folder to use> -D GENERATOR= -D COMPILER= -D BUILD_TYPE= -P consumer.cmake

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
    -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D CMAKE_PREFIX_PATH=${WORK}/moved)
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${WORK}/build/consumer)

file(GLOB_RECURSE configs ${WORK}/moved/*.cmake)
get_filename_component(source ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
foreach(config ${configs})
  file(READ ${config} text)
  string(FIND "${text}" "${source}/" position)
  if(NOT position EQUAL -1)
    message(FATAL_ERROR "${config} names the source tree ${source}")
  endif()
endforeach()
