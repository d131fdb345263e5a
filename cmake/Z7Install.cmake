# The install of the library: its headers and a package config. The program brings its own install.
#   find_package(Z7CashFlow) then gives the target z7::cashflow.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Z7CashFlow)

install(TARGETS z7_cashflow EXPORT Z7CashFlowTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/internalHeaders.txt internalHeaders REGEX "^[^#]")
list(TRANSFORM internalHeaders REPLACE "^(.+)$" "PATTERN;\\1;EXCLUDE")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/z7cashflow DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h" ${internalHeaders})
install(EXPORT Z7CashFlowTargets NAMESPACE z7:: DESTINATION ${packageDir})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/Z7CashFlowConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/Z7CashFlowConfig.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/Z7CashFlowConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/Z7CashFlowConfig.cmake ${PROJECT_BINARY_DIR}/Z7CashFlowConfigVersion.cmake
        DESTINATION ${packageDir})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
