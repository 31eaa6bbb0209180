# SPDX-License-Identifier: MIT
# Builds for Windows with Debian's MinGW-w64, in the variant with POSIX threads, because the other
# has no std::mutex. Everything except Windows' own libraries is linked statically.
# EXIFKEEP_PROCESSOR is x86_64 or i686; the codec libraries are those built by
# scripts/windows_codecs.sh.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 10.0)
set(EXIFKEEP_PROCESSOR x86_64 CACHE STRING "The processor to build for: x86_64 or i686")
# libjpeg-turbo expects Windows' name of the processor.
if(EXIFKEEP_PROCESSOR STREQUAL x86_64)
  set(CMAKE_SYSTEM_PROCESSOR AMD64)
else()
  set(CMAKE_SYSTEM_PROCESSOR X86)
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES EXIFKEEP_PROCESSOR)

set(mingw ${EXIFKEEP_PROCESSOR}-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw}-windres)

set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH
  ${CMAKE_CURRENT_LIST_DIR}/../build/windows-codecs/${EXIFKEEP_PROCESSOR} /usr/${mingw})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Programs are run under Wine, with a prefix in the build folder.
find_program(EXIFKEEP_WINE wine64 PATHS /usr/lib/wine)
if(EXIFKEEP_WINE AND EXIFKEEP_PROCESSOR STREQUAL x86_64)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${EXIFKEEP_WINE})
endif()
