// SPDX-License-Identifier: MIT
// Files truncated anywhere, and files of 1 MiB designed to be slow. The sanitizers check all memory
// accesses.
#include <cmath>
#include <functional>

#include "failure_switch.h"
#include "info/memory_meter.h"
#include "read/reading.h"

namespace exifkeep::test {
namespace {

using HostileFilesTest = ReadTest;

// Calls all reading functions and checks that their results agree.
bool isExif(const std::string& path) {
  PRaster image, thumbnail;
  char sound[15];
  const int answer = IsExifFile(path.c_str());
  CPtrList list;
  EXPECT_EQ(GetExifInfo(path.c_str(), &list), answer);
  EXPECT_EQ(FreeInfoList(&list), 1);
  EXPECT_TRUE(std::isfinite(GetExifVersion(path.c_str())));
  EXPECT_TRUE(!GetSoundFile(path.c_str(), sound) || memchr(sound, 0, sizeof sound));
  const int opened = OpenExifFile(path.c_str(), &image, &thumbnail);
  EXPECT_LE(opened, answer);
  EXPECT_EQ(Reading(path).succeeded, answer == 1);
  return answer == 1;
}

TEST_F(HostileFilesTest, EveryPrefixReturns) {
  const Picture picture{
      .image = {exifPointer(), gpsPointer(), text(0x10F, "Maker of things"), text(0x110, "Model"),
                rationals(0x11A, {72, 1}), shorts(0x102, {8, 8, 8}), text(0x132, "2002:05:14")},
      .exif = {version(), interoperabilityPointer(), rationals(0x829A, {1, 60}),
               bytes(0x927C, std::string(40, 'n')), bytes(0x9286, "ASCII+++comment"),
               shorts(0x9214, {1, 2, 3, 4}), text(0xA004, "SOUND001.WAV"), text(0x9290, "12345")},
      .interoperability = {bytes(1, "R98"), bytes(2, "0100")},
      .gps = {text(1, "N"), rationals(2, {1, 1, 2, 1, 3, 1}), text(18, "WGS-84")},
      .thumbnail = {shorts(0x103, {6}), longs(0x201, {900}), longs(0x202, {100})}};
  for (const Order order : bothOrders) {
    const std::string file = jpegBytes(tiffBytes(picture, order), jfifSegment());
    // The version is the first entry of its directory; with its tag the file becomes an Exif file.
    const size_t enough = 30 + picture.offsetOf(Directory::exif) + 2 + 2;
    for (size_t length = 0; length <= file.size(); ++length)
      EXPECT_EQ(isExif(fileOf(file.substr(0, length))), length >= enough) << length;
    EXPECT_EQ(itemsOf(path("x.jpg")).size(), 10u);
  }
  EXPECT_EQ(openHandles(), 0);
}

TEST_F(HostileFilesTest, UsesMemoryInProportionToTheFile) {
  constexpr uint32_t megabyte = 1 << 20, all = 0xFFFFFFFF;
  const auto many = [](auto entryAt) {
    std::vector<Entry> entries = {version()};
    for (uint32_t i = 1; i < 0x7FFF; ++i) entries.push_back(entryAt(i));
    return entries;
  };
  const auto exif = [&](auto entryAt) { return Picture{{exifPointer()}, many(entryAt)}; };
  Picture distant{many([](uint32_t i) {
    return field(0x10F, typeAscii, all, i % 2 ? megabyte - 300 - i : megabyte / 2 + i);
  })};
  distant.image[0] = exifPointer();
  distant.exif = {version()};
  const Entry toItself = longs(0x8769, {8});
  const std::pair<const char*, Picture> cases[] = {
      {"maker notes", exif([](uint32_t i) { return field(0x927C, typeUndefined, all, i); })},
      {"comments", exif([](uint32_t i) { return field(0x9286, typeUndefined, all, i); })},
      {"interoperability", exif([](uint32_t i) { return field(0xA005, typeLong, 1, 12 * i); })},
      {"GPS pointers", {many([](uint32_t i) { return field(0x8825, typeLong, 1, i); })}},
      {"distant texts", distant},
      {"directories that are each other",
       {{version(), toItself, longs(0x8825, {8}), longs(0xA005, {8}),
         field(0x927C, typeUndefined, all, 0), field(0x9286, typeUndefined, all, 0)}}},
  };
  for (auto [what, picture] : cases) {
    if (picture.exif.empty()) picture.image[1] = toItself;
    std::string file = tiffBytes(picture, Order::ii);
    // The rest of the file reads as directories of 32,767 entries.
    while (file.size() < megabyte) file += "\xFF\x7F";
    fileOf(file);
    CPtrList list;
    const size_t before = bytesAllocated();
    EXPECT_EQ(GetExifInfo(path("x.jpg").c_str(), &list), 1) << what;
    EXPECT_TRUE(Reading(path("x.jpg")).succeeded) << what;
    EXPECT_LT(bytesAllocated() - before, 3 * file.size() + megabyte) << what;
    FreeInfoList(&list);
    EXPECT_TRUE(isExif(path("x.jpg"))) << what;
  }
}

TEST_F(HostileFilesTest, LoadsOnlyWhatIsUsedOfNoteAndComment) {
  constexpr uint32_t all = 0xFFFFFFFF;
  const Picture picture{
      {exifPointer()},
      {version(), field(0x927C, typeUndefined, all, 8), field(0x9286, typeUndefined, all, 8)}};
  const std::string path = fileOf(tiffBytes(picture, Order::ii));
  std::filesystem::resize_file(path, 768 << 20);
  char sound[15];
  CPtrList list;
  PRaster image, thumbnail;
  const std::tuple<const char*, std::function<bool()>, size_t> calls[] = {
      {"version", [&] { return GetExifVersion(path.c_str()) == 2.2f; }, 0},
      {"sound", [&] { return !GetSoundFile(path.c_str(), sound); }, 0},
      {"list", [&] { return GetExifInfo(path.c_str(), &list) == 1; }, 0},
      {"open", [&] { return OpenExifFile(path.c_str(), &image, &thumbnail) == 1; }, 0},
      {"save", [&] { return Reading(path).succeeded; }, 65536}};
  for (const auto& [what, call, longest] : calls) {
    const size_t before = bytesAllocated();
    EXPECT_TRUE(call()) << what;
    EXPECT_LT(bytesAllocated() - before, 2 * longest + 32768) << what;
  }
  FreeInfoList(&list);
}

}  // namespace
}  // namespace exifkeep::test
