# The install of the library: headers, libraries and a package config, component by component. The program brings its
# own install.
#   find_package(Z7CashFlow 0.2 COMPONENTS sqlite texts) then makes z7::cashflow, z7::sqlite and z7::texts.
# A component that this build lacks is installed as nothing; the config says so to whoever asks for it.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Z7CashFlow)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/internalHeaders.txt internalHeaders REGEX "^[^#]")

# The headers of src that the given ones include, directly or through others, themselves included.
function(z7_header_closure result)
  set(open ${ARGN})
  set(closure "")
  while(open)
    list(POP_FRONT open header)
    list(APPEND closure ${header})
    file(STRINGS ${PROJECT_SOURCE_DIR}/src/${header} includes REGEX "^#include \"(adapters|workbench|texts)/")
    list(TRANSFORM includes REPLACE "^#include \"([^\"]+)\".*$" "\\1")
    list(REMOVE_ITEM includes ${closure} ${open})
    list(APPEND open ${includes})
  endwhile()
  set(${result} ${closure} PARENT_SCOPE)
endfunction()

# z7_install_component(NAME TARGETS targets... HEADERS headers... [RUNTIME component])
# What a component consists of. The headers are the doors of it; what they include is installed with them. The shared library,
# if it is built, belongs to the RUNTIME component of the install, by default "libraries".
function(z7_install_component name)
  cmake_parse_arguments(ARG "" "RUNTIME" "TARGETS;HEADERS" ${ARGN})
  if(NOT ARG_RUNTIME)
    set(ARG_RUNTIME libraries)
  endif()
  install(TARGETS ${ARG_TARGETS} EXPORT Z7CashFlow-${name}-static
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(EXPORT Z7CashFlow-${name}-static NAMESPACE z7:: DESTINATION ${packageDir} COMPONENT development)
  if(BUILD_SHARED_LIBS)
    list(TRANSFORM ARG_TARGETS APPEND _shared)
    install(TARGETS ${ARG_TARGETS} EXPORT Z7CashFlow-${name}-shared
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${ARG_RUNTIME} NAMELINK_COMPONENT development)
    install(EXPORT Z7CashFlow-${name}-shared NAMESPACE z7:: DESTINATION ${packageDir} COMPONENT development)
  endif()
  z7_header_closure(headers ${ARG_HEADERS})
  set_property(GLOBAL APPEND PROPERTY Z7_PUBLIC_HEADERS ${headers})
  foreach(header IN LISTS headers)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${PROJECT_SOURCE_DIR}/src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder}
            COMPONENT development)
  endforeach()
endfunction()

function(z7_headers_below result folder)
  file(GLOB_RECURSE headers RELATIVE ${PROJECT_SOURCE_DIR}/src CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
  list(REMOVE_ITEM headers ${internalHeaders})
  set(${result} ${headers} PARENT_SCOPE)
endfunction()

z7_headers_below(headers z7cashflow)
z7_install_component(cashflow TARGETS z7_cashflow HEADERS ${headers})
install(FILES ${z7_version_header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/z7cashflow/support COMPONENT development)

z7_headers_below(headers workbench)
z7_install_component(workbench TARGETS z7_workbench HEADERS ${headers})
z7_headers_below(headers texts)
z7_install_component(texts TARGETS z7_texts HEADERS ${headers})

if(TARGET z7_databases)
  z7_install_component(databases TARGETS z7_databases
    HEADERS adapters/shared/session/PooledConnection.h adapters/shared/reasons/DatabaseReason.h)
endif()
if(TARGET z7_sqlite)
  z7_install_component(sqlite TARGETS z7_sqlite
    HEADERS adapters/sqlite/Connection.h adapters/sqlite/AccountTables.h adapters/sqlite/database.h)
endif()
if(TARGET z7_odbc)
  z7_install_component(odbc TARGETS z7_odbc
    HEADERS adapters/odbc/AccountTables.h adapters/odbc/Connection.h adapters/odbc/accountSchema.h)
endif()
if(TARGET z7_wx)
  z7_install_component(window TARGETS z7_wx HEADERS adapters/wx/WindowSystem.h RUNTIME window)
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/Z7CashFlowConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/Z7CashFlowConfig.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/Z7CashFlowConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/Z7CashFlowConfig.cmake ${PROJECT_BINARY_DIR}/Z7CashFlowConfigVersion.cmake
        DESTINATION ${packageDir} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/schema/ DESTINATION ${CMAKE_INSTALL_DATADIR}/z7cashflow/schema
        COMPONENT program FILES_MATCHING PATTERN "*.sql")

set(documents ${CMAKE_INSTALL_DATADIR}/doc/z7cashflow)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples DESTINATION ${documents}
        COMPONENT documentation PATTERN Doxyfile.in EXCLUDE PATTERN namespaces.dox EXCLUDE)
install(FILES ${PROJECT_SOURCE_DIR}/schema/README.md DESTINATION ${documents}/schema COMPONENT documentation)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${documents} COMPONENT license)

# For builds that do not use CMake: pkg-config z7cashflow-sqlite, with --static if there are no shared libraries. The
# prefix is found from the file's own place.
function(z7_pkg_config name description requires requiresPrivate libraries)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/z7cashflow.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
          COMPONENT development)
endfunction()

cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE libraryFolder)
string(REGEX REPLACE "[^/]+" ".." pathToPrefix ${libraryFolder}/pkgconfig)
set(base "z7cashflow = ${PROJECT_VERSION}")
z7_pkg_config(z7cashflow "${PROJECT_DESCRIPTION}" "" "libxml-2.0, libutf8proc" "-lz7cashflow")
z7_pkg_config(z7cashflow-workbench "Statement, open vouchers, corrections and their log" "${base}" "" "-lz7cashflow-workbench")
z7_pkg_config(z7cashflow-texts "Texts of Z7CashFlow in Chinese and English" "${base}" "" "-lz7cashflow-texts")
if(TARGET z7_databases)
  z7_pkg_config(z7cashflow-databases "What database adapters of Z7CashFlow share" "${base}" "" "-lz7cashflow-databases")
endif()
set(base "z7cashflow-databases = ${PROJECT_VERSION}")
if(TARGET z7_sqlite)
  z7_pkg_config(z7cashflow-sqlite "The embedded database of Z7CashFlow" "${base}" "sqlite3 >= 3.39" "-lz7cashflow-sqlite")
endif()
if(TARGET z7_odbc)
  z7_pkg_config(z7cashflow-odbc "Z7CashFlow on a server through ODBC" "${base}" "odbc" "-lz7cashflow-odbc")
endif()
