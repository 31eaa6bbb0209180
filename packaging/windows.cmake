# The zip that `cpack` makes: program and DLLs in bin, import libraries and CMake's package in lib,
# headers, and the licences of what the platform library was linked with.
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME exifkeep)
set(CPACK_PACKAGE_VENDOR "The exifkeep authors")
set(CPACK_PACKAGE_FILE_NAME exifkeep-${PROJECT_VERSION}-windows-${EXIFKEEP_PROCESSOR})
set(CPACK_STRIP_FILES ON)

# Where scripts/windows_codecs.sh has put them.
if(CMAKE_CROSSCOMPILING)
  list(GET CMAKE_FIND_ROOT_PATH 0 codecs)
  install(DIRECTORY ${codecs}/licences DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT licence)
endif()

include(CPack)
