# SPDX-License-Identifier: MIT
# The three Debian packages made by `cpack`: the shared libraries, the development files, and the
# program. The preset `package` selects Debian's layout.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME exifkeep)
set(CPACK_PACKAGE_VENDOR "The exifkeep authors")
set(CPACK_PACKAGE_CONTACT "The exifkeep authors <exifkeep@example.org>")
# Debug symbols are stripped into separate packages.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian_documents.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian_control.cmake)

set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/platform)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_COMPONENTS_ALL runtime development program)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_PROGRAM_DEPENDS runtime)

# Otherwise the project's description would be the first line of each of the following.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(what_it_does "\
lists the metadata as labels and values in thirteen languages, saves edited
pictures with the metadata they came with, and attaches sound recordings to
pictures.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libexifkeep${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "library for the Exif metadata of pictures
exifkeep is a small library for photo applications. It
${what_it_does}")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libexifkeep-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "library for the Exif metadata of pictures (development files)
The C++20 headers of exifkeep and what CMake and pkg-config need to find it,
for building applications that read and write Exif metadata.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME exifkeep)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "list and preserve the Exif metadata of pictures
exifkeep works on JPEG and TIFF pictures from the command line. It
${what_it_does}")

include(CPack)
