# SPDX-License-Identifier: MIT
# Windows resources of programs and libraries. On other systems these functions do nothing.

# exifkeep_utf8_manifest(TARGET): the program uses UTF-8 and long paths.
function(exifkeep_utf8_manifest target)
  if(NOT WIN32)
    return()
  endif()
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${target}_manifest.rc
    "1 24 \"${PROJECT_SOURCE_DIR}/cmake/utf8.manifest\"\n")
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_manifest.rc)
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO)
  endif()
endfunction()

# exifkeep_version_resource(TARGET FILE DESCRIPTION): the version and description in the properties
# of the target's FILE.
function(exifkeep_version_resource target EXIFKEEP_FILE_NAME EXIFKEEP_FILE_DESCRIPTION)
  if(NOT WIN32)
    return()
  endif()
  string(REPLACE "." "," EXIFKEEP_VERSION_NUMBERS ${PROJECT_VERSION})
  string(REGEX REPLACE ".*\\.(.)" "VFT_\\1" EXIFKEEP_FILE_TYPE ${EXIFKEEP_FILE_NAME})
  string(TOUPPER ${EXIFKEEP_FILE_TYPE} EXIFKEEP_FILE_TYPE)
  string(REPLACE VFT_EXE VFT_APP EXIFKEEP_FILE_TYPE ${EXIFKEEP_FILE_TYPE})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${target}_version.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
endfunction()
