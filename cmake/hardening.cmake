# SPDX-License-Identifier: MIT
# Hardens optimised builds as far as compiler and linker support it: overflows of the stack and of
# buffers of known size terminate the process, indirect jumps may only go to marked places, and the
# tables of the dynamic linker are read-only. Debug builds are not hardened, because sanitizers
# check them.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckPIESupported)

set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection
                      -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "EXIFKEEP_HAS${flag}" found)
  check_cxx_compiler_flag(-Werror\ ${flag} ${found})
  if(${found})
    add_compile_options($<${optimised}:${flag}>)
  endif()
endforeach()
# Some systems' compilers set it to another level by default.
add_compile_options($<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=3>)

foreach(flag IN ITEMS -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  string(MAKE_C_IDENTIFIER "EXIFKEEP_HAS${flag}" found)
  check_linker_flag(CXX ${flag} ${found})
  if(${found})
    add_link_options($<${optimised}:${flag}>)
  endif()
endforeach()
check_pie_supported(LANGUAGES CXX)
