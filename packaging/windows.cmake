# SPDX-License-Identifier: MIT
# The zip made by `cpack`: program and DLLs in bin, import libraries and the CMake package in lib,
# headers, and the licences of all linked libraries.
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME exifkeep)
set(CPACK_PACKAGE_VENDOR "The exifkeep authors")
set(CPACK_PACKAGE_FILE_NAME exifkeep-${PROJECT_VERSION}-windows-${EXIFKEEP_PROCESSOR})
set(CPACK_STRIP_FILES ON)

# Those of the codecs are stored by scripts/windows_codecs.sh.
if(CMAKE_CROSSCOMPILING)
  list(GET CMAKE_FIND_ROOT_PATH 0 codecs)
  set(licences ${CMAKE_INSTALL_DOCDIR}/licences)
  install(DIRECTORY ${codecs}/licences/ DESTINATION ${licences} COMPONENT licence)
  install(FILES /usr/share/doc/mingw-w64-common/copyright RENAME mingw-w64
    DESTINATION ${licences} COMPONENT licence)
  install(FILES /usr/share/doc/libcli11-dev/copyright RENAME cli11
    DESTINATION ${licences} COMPONENT licence)
endif()

include(CPack)
