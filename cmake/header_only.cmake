# SPDX-License-Identifier: MIT
# exifkeep_find_headers(PACKAGE TARGET FOLDER): finds a header-only library. A cross build uses a
# copy of this machine's headers, because the folder also has headers of the wrong system.
function(exifkeep_find_headers package target folder)
  if(NOT CMAKE_CROSSCOMPILING)
    find_package(${package} REQUIRED CONFIG)
    return()
  endif()
  find_path(EXIFKEEP_${package}_INCLUDE ${folder} PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(copies ${PROJECT_BINARY_DIR}/headers/${package})
  file(COPY ${EXIFKEEP_${package}_INCLUDE}/${folder} DESTINATION ${copies})
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE ${copies})
endfunction()
