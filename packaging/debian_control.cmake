# SPDX-License-Identifier: MIT
# Run by cpack on the packages it has made: packs each again in Debian's way. Removes scripts that
# call ldconfig, as the trigger is sufficient; adds symbols, Multi-Arch, and the documents and
# checksums of the debug packages; and sets all dates to that of the changelog, for reproducible
# builds.
find_program(DPKG_DEB dpkg-deb REQUIRED)
find_program(DPKG_GENSYMBOLS dpkg-gensymbols REQUIRED)

execute_process(COMMAND dpkg-parsechangelog -l ${CMAKE_CURRENT_LIST_DIR}/debian_changelog -S Timestamp
  OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(ENV{SOURCE_DATE_EPOCH} ${epoch})
set(root ${CPACK_TEMPORARY_DIRECTORY}/package)

# Fails unless the exported symbols are those in libexifkeep0.symbols.
function(write_symbols)
  file(MAKE_DIRECTORY ${root}/debian)
  file(WRITE ${root}/debian/control "Source: exifkeep\n\nPackage: libexifkeep0\nArchitecture: any\n")
  file(GLOB_RECURSE libraries ${root}/usr/lib/libexifkeep*.so.?)
  list(TRANSFORM libraries PREPEND -e)
  execute_process(
    COMMAND ${DPKG_GENSYMBOLS} -c4 -plibexifkeep0 -v${CPACK_PACKAGE_VERSION} -P${root} ${libraries}
      -I${CMAKE_CURRENT_LIST_DIR}/libexifkeep0.symbols -O${root}/DEBIAN/symbols
    WORKING_DIRECTORY ${root} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${root}/debian)
  foreach(library IN ITEMS libexifkeep libexifkeep_platform)
    file(APPEND ${root}/DEBIAN/shlibs "${library} 0 libexifkeep0 (>= ${CPACK_PACKAGE_VERSION})\n")
  endforeach()
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  file(REMOVE_RECURSE ${root})
  execute_process(COMMAND ${DPKG_DEB} -R ${package} ${root} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${root}/DEBIAN/postinst ${root}/DEBIAN/postrm)
  file(READ ${root}/DEBIAN/control control)
  if(control MATCHES "Package: libexifkeep0\n")
    write_symbols()
  elseif(control MATCHES "\nPackage: ([a-z0-9]+)-dbgsym\n")
    file(MAKE_DIRECTORY ${root}/usr/share/doc)
    file(CREATE_LINK ${CMAKE_MATCH_1} ${root}/usr/share/doc/${CMAKE_MATCH_1}-dbgsym SYMBOLIC)
    execute_process(COMMAND sh -c "find usr -type f | LC_ALL=C sort | xargs md5sum"
      WORKING_DIRECTORY ${root} OUTPUT_FILE ${root}/DEBIAN/md5sums COMMAND_ERROR_IS_FATAL ANY)
  endif()
  if(control MATCHES "Package: libexifkeep")
    string(PREPEND control "Multi-Arch: same\n")
  elseif(control MATCHES "Package: exifkeep\n")
    string(PREPEND control "Multi-Arch: foreign\n")
  endif()
  file(WRITE ${root}/DEBIAN/control "${control}")
  execute_process(COMMAND find ${root} -exec touch -hd @${epoch} {} + COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${DPKG_DEB} --root-owner-group -Zxz -b ${root} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(REMOVE_RECURSE ${root})
