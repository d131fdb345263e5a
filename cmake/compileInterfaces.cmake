# Compiles an interface definition. Variables: WIDL, INCLUDE, LIBRARIES, SOURCE, OUTPUT (folder).
#
# The compiler ends with success even if it leaves a member out, so whatever it prints is a failure. The one exception
# is what it says of the default of a reference to a boolean: it stores it correctly, as the test of the type library shows.
get_filename_component(name ${SOURCE} NAME_WE)
file(MAKE_DIRECTORY ${OUTPUT}/com)
set(header -h)
set(header_file com/${name}.h)
set(identifiers -u)
set(identifiers_file ${name}_i.c)
set(library -t -DZ7_TYPE_LIBRARY)
set(library_file ${name}.tlb)
foreach(kind header identifiers library)
  set(file ${OUTPUT}/${${kind}_file})
  execute_process(COMMAND ${WIDL} -I ${INCLUDE} -L ${LIBRARIES} ${${kind}} -o ${file} ${SOURCE}
                  OUTPUT_VARIABLE printed ERROR_VARIABLE printed RESULT_VARIABLE result)
  string(REPLACE "warning: non-null pointer default value\n" "" unexpected "${printed}")
  if(NOT result EQUAL 0 OR NOT unexpected STREQUAL "")
    file(REMOVE ${file})
    message(FATAL_ERROR "widl ${${kind}} ${SOURCE}:\n${printed}")
  endif()
endforeach()
