# Debian packages: which part of the install goes into which, and what they say about themselves. To make them: cpack -G DEB
# in the build folder, or scripts/packages.sh, which also tries them. docs/packaging.md describes them for administrators.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME z7cashflow)
set(CPACK_PACKAGE_VENDOR "The Z7CashFlow authors")
set(CPACK_PACKAGE_CONTACT "The Z7CashFlow authors <maintainers@z7cashflow.example>"
    CACHE STRING "Maintainer of the packages: a name with an address")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE z7cashflow)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# One thread, because the number of threads is part of a compressed file.
set(CPACK_THREADS 1)

set(debianVersion ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(library libz7cashflow${z7_soname})
set(CPACK_COMPONENTS_ALL "")

# z7_package(COMPONENT NAME SECTION SUMMARY sentence TEXT lines... [DEPENDS fields] [SUGGESTS fields])
# Puts a component of the install into a package. What its programs and libraries are linked with is added to DEPENDS.
macro(z7_package component name section)
  cmake_parse_arguments(ARG "" "SUMMARY;DEPENDS;SUGGESTS" "TEXT" ${ARGN})
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  string(TOUPPER ${component} upper)
  list(JOIN ARG_TEXT "\n" text)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${ARG_SUMMARY}\n${text}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARG_DEPENDS}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_SUGGESTS "${ARG_SUGGESTS}")
endmacro()

z7_package(program z7cf misc
  SUMMARY "cash-flow statement from the vouchers of a general ledger"
  TEXT "z7cf allocates the cash movements of general-ledger vouchers to the items"
       "of the cash-flow statement, voucher by voucher or for a whole year, stores"
       "the rows beside the ledger, prepares the statement and proves it against"
       "the balances of the cash accounts. It works on an embedded database in a"
       "file and, through ODBC, on a database server, in English and Chinese."
  SUGGESTS "z7cashflow-doc, tdsodbc")
z7_package(libraries ${library} libs
  SUMMARY "cash-flow rows of general-ledger vouchers - shared libraries"
  TEXT "Z7CashFlow finds, generates, checks and stores the rows that allocate the"
       "cash movements of vouchers to the items of the cash-flow statement, for"
       "programs in which vouchers are entered and posted."
       "."
       "This package contains the library and its components: the embedded"
       "database, database servers through ODBC, the texts in two languages, and"
       "the work on many vouchers at once.")
if(TARGET z7_wx)
  z7_package(window libz7cashflow-window${z7_soname} libs
    SUMMARY "cash-flow rows of general-ledger vouchers - window of the dialog"
    TEXT "Z7CashFlow finds, generates, checks and stores the rows that allocate the"
         "cash movements of vouchers to the items of the cash-flow statement."
         "."
         "This package contains the component that shows the cash-flow dialog on a"
         "desktop. It is separate so that servers need no desktop libraries.")
  set(windowLibrary ", libz7cashflow-window${z7_soname} (= ${debianVersion})")
  set(windowStatic ", libwxgtk3.2-dev, libgtk-3-dev")
endif()
# pkg-config asks for the packages of Requires.private, and the static libraries are linked with them.
z7_package(development libz7cashflow-dev libdevel
  SUMMARY "cash-flow rows of general-ledger vouchers - development files"
  TEXT "Z7CashFlow finds, generates, checks and stores the rows that allocate the"
       "cash movements of vouchers to the items of the cash-flow statement, for"
       "programs in which vouchers are entered and posted."
       "."
       "This package contains the C++ headers, the static libraries, and the files"
       "for CMake and pkg-config."
  DEPENDS "${library} (= ${debianVersion})${windowLibrary}, libxml2-dev, libutf8proc-dev, libsqlite3-dev, unixodbc-dev"
  SUGGESTS "z7cashflow-doc${windowStatic}")
z7_package(documentation z7cashflow-doc doc
  SUMMARY "cash-flow rows of general-ledger vouchers - documentation"
  TEXT "Z7CashFlow finds, generates, checks and stores the rows that allocate the"
       "cash movements of vouchers to the items of the cash-flow statement."
       "."
       "This package contains the manual of the program z7cf, the guide for"
       "programs that use the library, and example programs.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

# The date of the version, in CHANGELOG.md, is the date of everything in the packages.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md heading REGEX "^## \\[${PROJECT_VERSION}\\] - ")
if(NOT heading MATCHES " - ([0-9][0-9][0-9][0-9])-0?([0-9]+)-0?([0-9]+)$")
  message(FATAL_ERROR "CHANGELOG.md has no heading \"## [${PROJECT_VERSION}] - YYYY-MM-DD\"")
endif()
set(year ${CMAKE_MATCH_1})
set(month ${CMAKE_MATCH_2})
set(day ${CMAKE_MATCH_3})
if(month LESS 3) # the year begins with March, so that its last day is the one that may be missing
  math(EXPR year "${year} - 1")
  math(EXPR month "${month} + 12")
endif()
math(EXPR CPACK_Z7_EPOCH
     "(365 * ${year} + ${year} / 4 - ${year} / 100 + ${year} / 400 + (153 * (${month} - 3) + 2) / 5 + ${day} - 719469) * 86400")
set(givenEpoch "$ENV{SOURCE_DATE_EPOCH}")
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_Z7_EPOCH})
string(TIMESTAMP changelogDate "%a, %d %b %Y %H:%M:%S +0000" UTC)
if(givenEpoch)
  set(ENV{SOURCE_DATE_EPOCH} ${givenEpoch})
else()
  unset(ENV{SOURCE_DATE_EPOCH})
endif()

set(CPACK_Z7_FILES ${PROJECT_BINARY_DIR}/debian)
set(CPACK_Z7_SONAME ${z7_soname})
set(CPACK_Z7_VERSION ${debianVersion})
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${CPACK_Z7_FILES}/changelog.Debian @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${CPACK_Z7_FILES}/changelog COPYONLY)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE license)
string(REGEX REPLACE "^.*(Permission is hereby .*)$" "\\1" license "${license}")
string(STRIP "${license}" license)
string(REPLACE "\n\n" "\n.\n" license "${license}")
string(REPLACE "\n" "\n " license "${license}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/copyright.in ${CPACK_Z7_FILES}/copyright @ONLY)
set(CPACK_Z7_DEBIAN ${PROJECT_SOURCE_DIR}/cmake/debian)

# The loader's cache is renewed when the libraries come and go; programs linked with them depend on their package.
file(WRITE ${CPACK_Z7_FILES}/triggers "activate-noawait ldconfig\n")
foreach(component libraries window)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${CPACK_Z7_FILES}/triggers ${CPACK_Z7_FILES}/${component}/shlibs)
endforeach()
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/finishPackages.cmake)

include(CPack)
