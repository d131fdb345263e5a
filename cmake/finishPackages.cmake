# Run by cpack when the components are installed, each in a folder of its own, and before they become packages: adds what
# Debian expects in each package, removes what it does not want there, and finds what the packages depend on.

set(ENV{SOURCE_DATE_EPOCH} ${CPACK_Z7_EPOCH})
set(ENV{LC_ALL} C.UTF-8)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# A file of a package that everybody may read.
function(put source target)
  configure_file(${source} ${target} COPYONLY)
  file(CHMOD ${target} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

# Where dpkg-shlibdeps finds which package holds which of our libraries: NAME NUMBER PACKAGE (RELATION VERSION).
file(MAKE_DIRECTORY ${CPACK_Z7_FILES}/shlibdeps/debian)
file(WRITE ${CPACK_Z7_FILES}/shlibdeps/debian/control "Source: z7cashflow\n\nPackage: z7cf\nArchitecture: any\n")
file(WRITE ${CPACK_Z7_FILES}/shlibs.local "")
set(libraryFolders "")
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(own "")
  file(GLOB_RECURSE libraries ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/*.so.${CPACK_Z7_SONAME})
  list(SORT libraries)
  foreach(library IN LISTS libraries)
    cmake_path(GET library PARENT_PATH folder)
    list(APPEND libraryFolders -l${folder})
    cmake_path(GET library FILENAME name)
    string(REGEX REPLACE "\\.so\\..*$" "" name ${name})
    string(APPEND own "${name} ${CPACK_Z7_SONAME} ${package} (>= ${CPACK_PACKAGE_VERSION})\n")
    # Among each other the libraries of one version belong together.
    file(APPEND ${CPACK_Z7_FILES}/shlibs.local "${name} ${CPACK_Z7_SONAME} ${package} (= ${CPACK_Z7_VERSION})\n")
  endforeach()
  if(own)
    file(WRITE ${CPACK_Z7_FILES}/${component}/shlibs "${own}")
  endif()
endforeach()
list(REMOVE_DUPLICATES libraryFolders)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component})
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})

  file(GLOB_RECURSE binaries ${root}/usr/bin/* ${root}/*.so.${CPACK_Z7_SONAME}.*)
  if(binaries)
    foreach(binary IN LISTS binaries)
      run(strip --strip-unneeded --remove-section=.comment --remove-section=.note ${binary})
    endforeach()
    execute_process(
      COMMAND dpkg-shlibdeps -O -x${package} -L${CPACK_Z7_FILES}/shlibs.local ${libraryFolders} ${binaries}
      WORKING_DIRECTORY ${CPACK_Z7_FILES}/shlibdeps OUTPUT_VARIABLE depends ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY
      OUTPUT_STRIP_TRAILING_WHITESPACE)
    string(REGEX REPLACE "^shlibs:Depends=" "" depends "${depends}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}")
  endif()
  file(GLOB_RECURSE archives ${root}/*.a)
  foreach(archive IN LISTS archives)
    run(strip --strip-debug --remove-section=.comment --enable-deterministic-archives ${archive})
  endforeach()

  file(GLOB_RECURSE pages ${root}/usr/share/man/*.1)
  foreach(page IN LISTS pages)
    run(gzip -9n ${page})
  endforeach()

  # Debian's zsh looks for completions of packages there.
  if(EXISTS ${root}/usr/share/zsh/site-functions)
    file(RENAME ${root}/usr/share/zsh/site-functions ${root}/usr/share/zsh/vendor-completions)
  endif()

  # The reference is there if it was written before, see Z7Docs.cmake.
  if(EXISTS ${root}/usr/share/doc/z7cashflow/html/index.html)
    put(${CPACK_Z7_DEBIAN}/doc-base ${root}/usr/share/doc-base/${package}.reference)
  endif()

  set(folder ${root}/usr/share/doc/${package})
  foreach(file copyright changelog changelog.Debian)
    put(${CPACK_Z7_FILES}/${file} ${folder}/${file})
  endforeach()
  run(gzip -9nf ${folder}/changelog ${folder}/changelog.Debian)
  if(EXISTS ${CPACK_Z7_DEBIAN}/${package}.overrides)
    put(${CPACK_Z7_DEBIAN}/${package}.overrides ${root}/usr/share/lintian/overrides/${package})
  endif()
endforeach()
