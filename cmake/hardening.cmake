# Hardening of optimised builds, as far as compiler and linker have it: overflows of the stack and of
# buffers whose size is known end the process, indirect jumps land on marked places only, and the
# tables of the dynamic linker are read-only once the program runs. Debug builds, which the
# sanitizers watch, go without.
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
# Compilers of some systems set it themselves, to another level.
add_compile_options($<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=3>)

foreach(flag IN ITEMS -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  string(MAKE_C_IDENTIFIER "EXIFKEEP_HAS${flag}" found)
  check_linker_flag(CXX ${flag} ${found})
  if(${found})
    add_link_options($<${optimised}:${flag}>)
  endif()
endforeach()
check_pie_supported(LANGUAGES CXX)
