// Installs this build into a folder, moves the folder, and uses it as hosts and users do: built
// against through CMake and pkg-config, run, and inspected. And the Debian packages' files.
#include <gmock/gmock.h>

#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
namespace fs = std::filesystem;

std::set<std::string> filesBelow(const fs::path& folder) {
  std::set<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (!entry.is_directory()) files.insert(entry.path().lexically_relative(folder));
  return files;
}

class Installed : public ShellTest {
 protected:
  Installed() {
    const Outcome installed =
        run("'" EXIFKEEP_CMAKE "' --install '" EXIFKEEP_BUILD_DIR "' --prefix staged");
    EXPECT_EQ(installed.status, 0) << installed.err;
    fs::rename(path("staged"), path("prefix"));
    fs::create_directory(path("pictures"));
    write("pictures/photo.jpg", exifJpeg("Maker"));
  }

  // A host built here lists the test's picture.
  void expectListing(const std::string& build, const std::string& host) const {
    const Outcome built = run(build);
    ASSERT_EQ(built.status, 0) << built.out << built.err;
    const Outcome listed = run(host + " pictures");
    EXPECT_EQ(listed.status, 0) << listed.err;
    EXPECT_THAT(listed.out, HasSubstr("photo.jpg (Exif 2.2)\n  Make: Maker\n"));
  }
};

TEST_F(Installed, HoldsWhatHostsAndUsersNeed) {
  std::set<std::string> files = filesBelow(path("prefix"));
  std::erase_if(files, [](const auto& file) { return file.find("exifkeepTargets-") != file.npos; });
  const std::string lib = EXIFKEEP_LIBDIR "/";
  const std::string platform = "include/exifkeep/platform/";
  EXPECT_EQ(files, (std::set<std::string>{
                       "bin/exifkeep",
                       "include/exifkeep/exifkeep.h",
                       platform + "afx.h",
                       platform + "afxcoll.h",
                       platform + "afxstat_.h",
                       platform + "afxwin.h",
                       platform + "language.h",
                       platform + "praster.h",
                       platform + "pxcodec32.h",
                       platform + "shellapi.h",
                       platform + "windows.h",
                       lib + "cmake/exifkeep/exifkeepConfig.cmake",
                       lib + "cmake/exifkeep/exifkeepConfigVersion.cmake",
                       lib + "cmake/exifkeep/exifkeepTargets.cmake",
                       lib + "libexifkeep.so",
                       lib + "libexifkeep.so.0",
                       lib + "libexifkeep.so." EXIFKEEP_VERSION,
                       lib + "libexifkeep_platform.so",
                       lib + "libexifkeep_platform.so.0",
                       lib + "libexifkeep_platform.so." EXIFKEEP_VERSION,
                       lib + "pkgconfig/exifkeep.pc",
                       "share/bash-completion/completions/exifkeep",
                       "share/doc/exifkeep/LICENSE",
                       "share/man/man1/exifkeep.1",
                       "share/man/man3/exifkeep.3",
                   }));
}

TEST_F(Installed, NamesNoPlaceOutsideItself) {
  for (const std::string& file : filesBelow(path("prefix"))) {
    const std::string bytes = read("prefix/" + file);
    if (bytes.starts_with("\x7F"
                          "ELF")) {
      // Debug information and assertions name sources; what is loaded may not.
      const Outcome dynamic = run("'" EXIFKEEP_READELF "' -d 'prefix/" + file + "'");
      EXPECT_EQ(dynamic.status, 0) << dynamic.err;
      EXPECT_THAT(dynamic.out, Not(HasSubstr("path: [/"))) << file;
      EXPECT_THAT(dynamic.out, Not(HasSubstr(":/"))) << file;
      continue;
    }
    for (const std::string& place :
         {std::string(EXIFKEEP_SOURCE_DIR), std::string(EXIFKEEP_BUILD_DIR), path("")})
      EXPECT_THAT(bytes, Not(HasSubstr(place))) << file;
  }
}

TEST_F(Installed, RunsTheProgram) {
  const Outcome checked = run("prefix/bin/exifkeep check pictures/photo.jpg");
  EXPECT_EQ(checked.out, "pictures/photo.jpg: Exif file\n") << checked.err;
}

TEST_F(Installed, ExportsTheTenFunctions) {
  const std::string library = "prefix/" EXIFKEEP_LIBDIR "/libexifkeep.so";
  EXPECT_EQ(run("'" EXIFKEEP_NM "' -D --defined-only " + library + " | wc -l").out, "10\n");
}

// The examples build on their own, without the flags of a sanitizer.
class InstalledForHosts : public Installed {
 protected:
  void SetUp() override {
    if (*EXIFKEEP_SANITIZERS) GTEST_SKIP() << "hosts would have to be built with the sanitizers";
  }
};

TEST_F(InstalledForHosts, IsFoundByCmake) {
  expectListing("'" EXIFKEEP_CMAKE "' -S '" EXIFKEEP_SOURCE_DIR
                "/examples' -B host -DCMAKE_CXX_COMPILER='" EXIFKEEP_CXX
                "' -DCMAKE_PREFIX_PATH=$PWD/prefix && '" EXIFKEEP_CMAKE "' --build host",
                "host/list_folder");
}

TEST_F(InstalledForHosts, IsFoundByPkgConfig) {
  if (run("command -v pkg-config").status != 0) GTEST_SKIP() << "no pkg-config";
  expectListing("export PKG_CONFIG_PATH=$PWD/prefix/" EXIFKEEP_LIBDIR "/pkgconfig; '" EXIFKEEP_CXX
                "' -std=c++20 -Wall -Wextra -Werror '" EXIFKEEP_SOURCE_DIR
                "/examples/list_folder.cpp' $(pkg-config --cflags --libs exifkeep) -o host",
                "LD_LIBRARY_PATH=prefix/" EXIFKEEP_LIBDIR " ./host");
}

class DebianPackages : public ShellTest {
 protected:
  void SetUp() override {
    if (*EXIFKEEP_SANITIZERS) GTEST_SKIP() << "packages are made of plain builds";
    if (run("command -v dpkg-deb dpkg-shlibdeps '" EXIFKEEP_CPACK "'").status != 0)
      GTEST_SKIP() << "no cpack, dpkg-deb or dpkg-shlibdeps";
    const Outcome packed =
        run("'" EXIFKEEP_CPACK "' --config '" EXIFKEEP_BUILD_DIR "/CPackConfig.cmake' -B $PWD");
    ASSERT_EQ(packed.status, 0) << packed.out << packed.err;
  }

  std::set<std::string> filesOf(const std::string& package) const {
    const Outcome unpacked = run("dpkg-deb -x " + package + "_*.deb files_" + package);
    EXPECT_EQ(unpacked.status, 0) << unpacked.err;
    return filesBelow(path("files_" + package));
  }
  std::string dependenciesOf(const std::string& package) const {
    return run("dpkg-deb -f " + package + "_*.deb Depends").out;
  }
};

TEST_F(DebianPackages, ShareTheFiles) {
  const std::set<std::string> library = filesOf("libexifkeep0"), program = filesOf("exifkeep"),
                              development = filesOf("libexifkeep-dev");
  const std::string lib = "usr/" EXIFKEEP_LIBDIR "/", doc = "usr/share/doc/";
  EXPECT_EQ(
      library,
      (std::set<std::string>{
          lib + "libexifkeep.so.0", lib + "libexifkeep.so." EXIFKEEP_VERSION,
          lib + "libexifkeep_platform.so.0", lib + "libexifkeep_platform.so." EXIFKEEP_VERSION,
          doc + "libexifkeep0/changelog.Debian.gz", doc + "libexifkeep0/copyright"}));
  EXPECT_EQ(program, (std::set<std::string>{
                         "usr/bin/exifkeep", "usr/share/bash-completion/completions/exifkeep",
                         "usr/share/man/man1/exifkeep.1.gz", doc + "exifkeep/changelog.Debian.gz",
                         doc + "exifkeep/copyright"}));
  EXPECT_THAT(development, IsSupersetOf({std::string("usr/include/exifkeep/exifkeep.h"),
                                         lib + "libexifkeep.so", lib + "pkgconfig/exifkeep.pc",
                                         std::string("usr/share/man/man3/exifkeep.3.gz")}));
  EXPECT_THAT(dependenciesOf("libexifkeep0"), HasSubstr("libtiff"));
  EXPECT_THAT(dependenciesOf("libexifkeep-dev"), HasSubstr("libexifkeep0 (= " EXIFKEEP_VERSION));
  EXPECT_THAT(dependenciesOf("exifkeep"), HasSubstr("libexifkeep0 (= " EXIFKEEP_VERSION));
}

}  // namespace
}  // namespace exifkeep::test
