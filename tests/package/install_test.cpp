// Installs this build into a folder, moves the folder, and uses it as hosts and users do: built
// against through CMake and pkg-config, run, and inspected. And the Debian packages' files.
#include <gmock/gmock.h>

#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::ContainsRegex;
using testing::Each;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;
using namespace std::string_view_literals;

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

TEST_F(Installed, HoldsThePublicHeadersAndRuns) {
  EXPECT_EQ(
      run("cd prefix/include/exifkeep && find . -name '*.h' | sort | xargs").out,
      "./exifkeep.h ./field_list.h ./platform/afx.h ./platform/afxcoll.h ./platform/afxstat_.h "
      "./platform/afxwin.h ./platform/code_page.h ./platform/exifkeep_version.h "
      "./platform/language.h "
      "./platform/load_picture.h ./platform/module_strings.h ./platform/platform_api.h "
      "./platform/praster.h "
      "./platform/pxcodec32.h ./platform/shell_copy_handler.h ./platform/shellapi.h "
      "./platform/windows.h\n");
  EXPECT_TRUE(fs::exists(path("prefix/share/doc/exifkeep/LICENSE")));
  EXPECT_EQ(run("prefix/bin/exifkeep check pictures/photo.jpg").out,
            "pictures/photo.jpg: Exif file\n");
}

// What a host's own functions of the same name could otherwise be taken for.
TEST_F(Installed, ShowsWhatItsHeadersDeclareAndCallsItsOwn) {
  const std::string libraries = "prefix/" EXIFKEEP_LIBDIR "/libexifkeep",
                    readelf = "'" EXIFKEEP_READELF "' -W --demangle ";
  EXPECT_EQ(run(readelf + "--dyn-syms " + libraries +
                "_platform.so | grep -o 'exifkeep::[A-Za-z]*' | sort -u | xargs")
                .out,
            "exifkeep::CodePageEncoder exifkeep::ModuleStrings exifkeep::languageVariants "
            "exifkeep::loadPicture exifkeep::matchLanguage exifkeep::runningVersion "
            "exifkeep::userLanguage\n");
  EXPECT_THAT(run(readelf + "-r " + libraries + ".so").out, Not(HasSubstr("EXIFKEEP_0")));
  EXPECT_THAT(run(readelf + "-r " + libraries + "_platform.so").out,
              AllOf(HasSubstr("jpeg_"), Not(HasSubstr("PRaster::")), Not(HasSubstr("CString::"))));
}

TEST_F(Installed, NamesNoPlaceOutsideItself) {
  for (const std::string& file : filesBelow(path("prefix"))) {
    const std::string bytes = read("prefix/" + file);
    if (bytes.substr(1, 3) == "ELF") {
      // Debug information and assertions name sources; what is loaded may not.
      const Outcome dynamic = run("'" EXIFKEEP_READELF "' -d 'prefix/" + file + "'");
      EXPECT_THAT(dynamic.out,
                  AllOf(HasSubstr("NEEDED"), Not(HasSubstr("path: [/")), Not(HasSubstr(":/"))))
          << file;
      continue;
    }
    for (const std::string& place :
         {std::string(EXIFKEEP_SOURCE_DIR), std::string(EXIFKEEP_BUILD_DIR), path("")})
      EXPECT_THAT(bytes, Not(HasSubstr(place))) << file;
  }
}

// Read off the files: full RELRO and immediate binding, a stack that is not executable, stack and
// buffer checks, and on x86 indirect jumps to marked places and stack probes.
TEST_F(Installed, IsHardened) {
  if (!*EXIFKEEP_HARDENED) GTEST_SKIP() << "only optimised builds without sanitizers are";
  const bool isX86 = run("uname -m").out == "x86_64\n";
  for (const std::string file : {"bin/exifkeep", EXIFKEEP_LIBDIR "/libexifkeep.so",
                                 EXIFKEEP_LIBDIR "/libexifkeep_platform.so"}) {
    const std::string name = "'prefix/" + file + "'";
    const std::string headers = run("'" EXIFKEEP_READELF "' -Wdl " + name).out;
    EXPECT_THAT(headers, AllOf(HasSubstr("BIND_NOW"), HasSubstr("GNU_RELRO"),
                               ContainsRegex("GNU_STACK.* RW "), HasSubstr("type is DYN")))
        << file;
    EXPECT_THAT(run("'" EXIFKEEP_NM "' -D " + name).out,
                AllOf(HasSubstr(" __stack_chk_fail"), HasSubstr("printf_chk")))
        << file;
    if (!isX86) continue;
    for (const std::string code : {"endbr64", R"((or[lq] +|movq? +)\$0x0,\(%rsp\))"})
      EXPECT_EQ(
          run("'" EXIFKEEP_OBJDUMP "' -d --no-show-raw-insn " + name + " | grep -qE '" + code + "'")
              .status,
          0)
          << file << ": " << code;
  }
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
                "/examples' -B host -G '" EXIFKEEP_GENERATOR "' -DCMAKE_CXX_COMPILER='" EXIFKEEP_CXX
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

// A project takes the sources in, makes static libraries of them and installs these with its own
// program; a second host links what was installed.
TEST_F(InstalledForHosts, IsASubprojectOfStaticLibraries) {
  write("CMakeLists.txt", R"(cmake_minimum_required(VERSION 3.25)
project(whole LANGUAGES CXX)
find_package(JPEG REQUIRED)
add_subdirectory(")" EXIFKEEP_SOURCE_DIR R"(" exifkeep)
foreach(absent IN ITEMS exifkeep_program exifkeep_docs package)
  if(TARGET ${absent})
    message(FATAL_ERROR "${absent} is no concern of the whole")
  endif()
endforeach()
if(DEFINED CPACK_GENERATOR OR CMAKE_BUILD_TYPE STREQUAL Release)
  message(FATAL_ERROR "the whole's own settings are changed")
endif()
add_executable(host ")" EXIFKEEP_SOURCE_DIR R"(/examples/list_folder.cpp")
target_link_libraries(host PRIVATE exifkeep::exifkeep exifkeep::platform))");
  expectListing("'" EXIFKEEP_CMAKE "' -S . -B whole -G '" EXIFKEEP_GENERATOR
                "' -DCMAKE_CXX_COMPILER='" EXIFKEEP_CXX
                "' -DCMAKE_DISABLE_FIND_PACKAGE_CLI11=ON -DBUILD_SHARED_LIBS=OFF"
                " -DEXIFKEEP_INSTALL=ON && '" EXIFKEEP_CMAKE "' --build whole",
                "whole/host");
  EXPECT_THAT(run("'" EXIFKEEP_READELF "' -d whole/host").out, Not(HasSubstr("libexifkeep")));
  ASSERT_EQ(run("'" EXIFKEEP_CMAKE "' --install whole --prefix static").status, 0);
  expectListing("'" EXIFKEEP_CMAKE "' -S '" EXIFKEEP_SOURCE_DIR
                "/examples' -B found -G '" EXIFKEEP_GENERATOR
                "' -DCMAKE_CXX_COMPILER='" EXIFKEEP_CXX
                "' -DCMAKE_PREFIX_PATH=$PWD/static && '" EXIFKEEP_CMAKE "' --build found",
                "found/list_folder");
  expectListing(
      "export PKG_CONFIG_PATH=$PWD/static/" EXIFKEEP_LIBDIR "/pkgconfig; '" EXIFKEEP_CXX
      "' -std=c++20 '" EXIFKEEP_SOURCE_DIR
      "/examples/list_folder.cpp' $(pkg-config --static --cflags --libs exifkeep) -o host",
      "./host");
}

using Abi = ShellTest;

TEST_F(Abi, IsThatOfItsNumber) {
  if (!*EXIFKEEP_ABI || run("command -v abidiff").status != 0)
    GTEST_SKIP() << "needs abidiff and a description made by g++ on x86-64, without sanitizers";
  const Outcome compared =
      run("P='" EXIFKEEP_SOURCE_DIR "/packaging'; \"$P\"/describe_abi.sh " EXIFKEEP_VERSION
          " '" EXIFKEEP_ABI "' now.abi && abidiff \"$P\"/exifkeep.abi now.abi");
  EXPECT_EQ(compared.status, 0) << compared.out << compared.err
                                << "Raise the version in exifkeep_version.h, then have the "
                                << "target abi_baseline write packaging/exifkeep.abi anew.";
}

class DebianPackages : public ShellTest {
 protected:
  void SetUp() override {
    if (*EXIFKEEP_SANITIZERS) GTEST_SKIP() << "packages are made of plain builds";
    if (run("for t in dpkg-deb dpkg-shlibdeps file '" EXIFKEEP_CPACK
            "'; do command -v $t || exit; done")
            .status != 0)
      GTEST_SKIP() << "no cpack, dpkg-deb, dpkg-shlibdeps or file";
    const Outcome packed =
        run("'" EXIFKEEP_CPACK "' --config '" EXIFKEEP_BUILD_DIR "/CPackConfig.cmake' -B $PWD");
    ASSERT_EQ(packed.status, 0) << packed.out << packed.err;
  }

  // Without the folder of its changelog and licence.
  std::set<std::string> filesOf(const std::string& package) const {
    const Outcome unpacked = run("dpkg-deb -x " + package + "_*.deb " + package);
    EXPECT_EQ(unpacked.status, 0) << unpacked.err;
    EXPECT_GE(fs::remove_all(path(package + "/usr/share/doc/" + package)), 3u) << package;
    return filesBelow(path(package + "/usr"));
  }
  std::string dependenciesOf(const std::string& package) const {
    return run("dpkg-deb -f " + package + "_*.deb Depends").out;
  }
};

TEST_F(DebianPackages, ShareTheFiles) {
  EXPECT_THAT(filesOf("libexifkeep0"), AllOf(SizeIs(4), Each(HasSubstr(".so.0"))));
  EXPECT_THAT(filesOf("exifkeep"),
              UnorderedElementsAre("bin/exifkeep", "share/bash-completion/completions/exifkeep",
                                   "share/zsh/vendor-completions/_exifkeep",
                                   "share/fish/vendor_completions.d/exifkeep.fish",
                                   "share/man/man1/exifkeep.1.gz"));
  EXPECT_THAT(
      filesOf("libexifkeep-dev"),
      IsSupersetOf({"include/exifkeep/exifkeep.h", EXIFKEEP_LIBDIR "/libexifkeep.so",
                    EXIFKEEP_LIBDIR "/pkgconfig/exifkeep.pc", "share/man/man3/exifkeep.3.gz"}));
  EXPECT_THAT(dependenciesOf("libexifkeep0"), HasSubstr("libtiff"));
  EXPECT_THAT(dependenciesOf("libexifkeep-dev"), HasSubstr("libexifkeep0 (= " EXIFKEEP_VERSION));
  EXPECT_THAT(dependenciesOf("exifkeep"), HasSubstr("libexifkeep0 (= " EXIFKEEP_VERSION));
  if (EXIFKEEP_LIBDIR == "lib"sv || run("command -v lintian").status != 0)
    GTEST_SKIP() << "no lintian, or CMAKE_INSTALL_PREFIX is not /usr";
  // There is no request for packages that this first version could close.
  const Outcome checked =
      run("lintian --allow-root --fail-on error,warning "
          "--suppress-tags initial-upload-closes-no-bugs *.deb");
  EXPECT_EQ(checked.status, 0) << checked.out << checked.err;
}

}  // namespace
}  // namespace exifkeep::test
