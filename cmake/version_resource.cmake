# exifkeep_version_resource(TARGET FILE DESCRIPTION): on Windows, gives the target's FILE the version
# and description that the system shows among its properties. Elsewhere the file's name tells the
# version.
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
