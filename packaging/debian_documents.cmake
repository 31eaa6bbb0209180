# SPDX-License-Identifier: MIT
# Run by cpack on the files of each package before packing: adds the documents that every Debian
# package has, and compresses the manual pages.
find_program(GZIP gzip REQUIRED)

function(write_compressed source target)
  execute_process(COMMAND ${GZIP} -9nc ${source} OUTPUT_FILE ${target} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(READ ${CMAKE_CURRENT_LIST_DIR}/../LICENSE licence)
file(READ ${CMAKE_CURRENT_LIST_DIR}/linked_licences.txt linked_licences)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX})
  string(TOUPPER ${component} key)
  set(documents ${root}/share/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME})
  file(MAKE_DIRECTORY ${documents})
  file(WRITE ${documents}/copyright "${licence}${linked_licences}")
  write_compressed(${CMAKE_CURRENT_LIST_DIR}/debian_changelog ${documents}/changelog.Debian.gz)

  file(GLOB pages ${root}/share/man/man*/*.[0-9])
  foreach(page IN LISTS pages)
    write_compressed(${page} ${page}.gz)
    file(REMOVE ${page})
  endforeach()
endforeach()
