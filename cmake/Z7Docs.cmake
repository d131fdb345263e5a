# The reference of the public headers by Doxygen, with the guides: the target "docs", if Doxygen is installed. It is part
# of an install if it was written before.

set(Z7_DOCS_FOLDER ${PROJECT_BINARY_DIR}/docs CACHE PATH "Where the reference is written, in its folder html")
get_property(headers GLOBAL PROPERTY Z7_PUBLIC_HEADERS)
list(REMOVE_DUPLICATES headers)
list(TRANSFORM headers PREPEND src/)
file(GLOB guides RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md
     ${PROJECT_SOURCE_DIR}/docs/*.dox)
set(Z7_DOCS_INPUT ${headers} ${guides})
list(TRANSFORM Z7_DOCS_INPUT REPLACE "(.+)" "\"${PROJECT_SOURCE_DIR}/\\1\"")
list(JOIN Z7_DOCS_INPUT " " Z7_DOCS_INPUT)
configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)

find_program(Z7_DOXYGEN doxygen DOC "Doxygen, for the reference of the public headers")
if(Z7_DOXYGEN)
  add_custom_target(docs COMMAND ${CMAKE_COMMAND} -E make_directory ${Z7_DOCS_FOLDER} COMMAND ${Z7_DOXYGEN} Doxyfile
                    WORKING_DIRECTORY ${PROJECT_BINARY_DIR} VERBATIM COMMENT "Writing ${Z7_DOCS_FOLDER}/html")
endif()
install(DIRECTORY ${Z7_DOCS_FOLDER}/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/z7cashflow COMPONENT documentation
        OPTIONAL)
