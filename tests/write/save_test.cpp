// SPDX-License-Identifier: MIT
#include <afxwin.h>
#include <exifkeep/exifkeep.h>

#include <cstring>
#include <sstream>

#include "system/temporary_picture.h"
#include "write/jpeg_stream.h"
#include "write/processing.h"
#include "write/save_fixture.h"
#include "write/save_jpeg.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

class SaveFileTest : public SaveTest {
 protected:
  SaveFileTest() {
    AfxSetMessageBoxHandler(
        [](void* boxes, const char*, UINT) { return ++*static_cast<int*>(boxes), IDOK; }, &boxes_);
  }
  ~SaveFileTest() override { AfxSetMessageBoxHandler(nullptr, nullptr); }

  // A JPEG file with these records.
  void makeSource(const std::string& name, const ExifMetadata& metadata) {
    ASSERT_TRUE(saveJpegWithRecords(reader_, path(name).c_str(), &image_, nullptr, metadata));
  }
  int save(const std::string& from, const std::string& to, PRaster* thumbnail = nullptr) {
    return SaveFile(path(from).c_str(), path(to).c_str(), &image_, thumbnail);
  }
  bool holdsExif(const std::string& name) { return IsExifFile(path(name).c_str()); }
  unsigned thumbnailWidth(const std::string& name) {
    PRaster thumbnail;
    EXPECT_EQ(OpenExifFile(path(name).c_str(), nullptr, &thumbnail), 1);
    return thumbnail.width();
  }

  PRaster image_ = picture(64, 48);
  int boxes_ = 0;
};

TEST_F(SaveFileTest, NullForAPathOrATextDoesNothing) {
  write("a.jpg", "as it was");
  std::string picture = path("a.jpg");
  char text[15] = "text";
  CPtrList list;
  EXPECT_EQ(GetExifVersion(nullptr), 0.0f);
  const char* path = picture.c_str();
  PRaster* image = &image_;
  for (const int result :
       {IsExifFile(nullptr), OpenExifFile(nullptr, image, image), GetExifInfo(nullptr, &list),
        GetSoundFile(nullptr, text), GetSoundFile(path, nullptr),
        SaveFile(nullptr, path, image, nullptr), SaveFile(path, nullptr, image, nullptr),
        SaveProcessFile(nullptr, nullptr, 2, image, nullptr),
        AddAudio(nullptr, text, image, nullptr), AddAudio(picture.data(), nullptr, image, nullptr),
        AddAudioFile(nullptr, text, text, image, nullptr, nullptr),
        AddAudioFile(picture.data(), nullptr, text, image, nullptr, nullptr),
        AddAudioFile(picture.data(), text, nullptr, image, nullptr, nullptr)})
    EXPECT_EQ(result, 0);
  EXPECT_EQ(read("a.jpg"), "as it was");
  EXPECT_EQ(image_.width(), 64u);
  EXPECT_EQ(boxes_, 0);
}

TEST_F(SaveFileTest, PutsTheSegmentBeforeTheCompactedStream) {
  makeSource("source.jpg", fullRecords());
  ASSERT_EQ(save("source.jpg", "saved.jpg"), 1);
  ASSERT_TRUE(savePlain(reader_, path("plain.jpg").c_str(), &image_));
  std::optional<PRaster> saved = load(path("saved.jpg")), plain = load(path("plain.jpg"));
  ASSERT_TRUE(saved && plain);
  EXPECT_EQ(largestDifference(*saved, *plain), 0);
  const std::string stream = compacted(image_), written = read("saved.jpg");
  EXPECT_EQ(stream.size(), read("plain.jpg").size() + 31);
  EXPECT_TRUE(written == stream.substr(0, 2) + segmentOf(written) + stream.substr(2));

  // The APP0 of a stream with another layout is removed.
  const std::string rest = "\xFF\xDB otherwise \xFF\xD9";
  codecFiles.picture = "\xFF\xD8\xFF\xE0" + std::string("\0\4xy", 4) + rest;
  makeSource("other.jpg", {});
  EXPECT_EQ(read("other.jpg").substr(2 + segmentOf(read("other.jpg")).size()), rest);
}

TEST_F(SaveFileTest, NamesDecideWhetherMetadataIsSaved) {
  makeSource("a.JPG", fullRecords());
  ASSERT_TRUE(savePlain(reader_, path("bare.jpg").c_str(), &image_));
  fs::copy(path("bare.jpg"), path("bare.tif"));
  fs::copy(path("a.JPG"), path("exif.tif"));
  const std::tuple<const char*, const char*, int, bool, int> cases[] = {
      {"a.JPG", "1.jpeg", 1, true, 0},        {"a.JPG", "2.jpe", 1, true, 0},
      {"a.JPG", "3.tif", 1, false, 0},        {"a.JPG", "4.png", 1, false, 0},
      {"bare.jpg", "5.jpg", 1, false, 0},     {"bare.tif", "6.jpg", 1, false, 0},
      {"none.jpg", "7.jpg", 1, false, 0},     {"exif.tif", "8.jpg", 1, false, 0},
      {"a.JPG", "jpg", 0, false, 1},          {"a.JPG", "9.xyz", 0, false, 1},
      {"a.JPG", "no/folder.jpg", 0, false, 0}};
  for (const auto& [from, to, result, keeps, boxes] : cases) {
    boxes_ = 0;
    EXPECT_EQ(save(from, to), result) << to;
    EXPECT_EQ(boxes_, boxes) << to;
    EXPECT_EQ(exists(to), result == 1) << to;
    EXPECT_EQ(holdsExif(to), keeps) << to;
  }
  // Without metadata, the codec's file is the result.
  EXPECT_TRUE(read("5.jpg") == read("bare.jpg"));
  PRaster empty;
  for (PRaster* none : {static_cast<PRaster*>(nullptr), &empty}) {
    EXPECT_EQ(SaveFile(path("a.JPG").c_str(), path("9.jpg").c_str(), none, nullptr), 0);
    EXPECT_EQ(SaveProcessFile(path("a.JPG").c_str(), path("9.jpg").c_str(), 2, none, nullptr), 0);
  }
  EXPECT_FALSE(exists("9.jpg"));
}

TEST_F(SaveFileTest, EmbedsTheHostsThumbnailAsItIs) {
  ExifMetadata metadata = fullRecords();
  metadata.thumbnail.hasCompression = 0;  // a reader would not know the record's
  makeSource("a.jpg", metadata);
  for (auto [width, height, bits] : {std::tuple{5u, 7u, 24}, {300u, 200u, 8}, {64u, 64u, 1}}) {
    PRaster own = picture(width, height, bits);
    ASSERT_EQ(save("a.jpg", "b.jpg", &own), 1);
    EXPECT_TRUE(segmentOf(read("b.jpg")).ends_with(compacted(own))) << width;
    EXPECT_EQ(thumbnailWidth("b.jpg"), width);
  }
  PRaster empty, own = picture(5, 7);
  ASSERT_EQ(save("a.jpg", "b.jpg", &empty), 1);
  EXPECT_EQ(thumbnailWidth("b.jpg"), 160u);

  // If it cannot be written, the save fails, but a generated one is just left out.
  codecFiles.thumbnail = "";
  for (PRaster* given : {&own, static_cast<PRaster*>(nullptr)}) {
    const std::string before = read("b.jpg");
    EXPECT_EQ(save("a.jpg", "b.jpg", given), !given);
    EXPECT_EQ(read("b.jpg") == before, given != nullptr);
    EXPECT_EQ(save("a.jpg", "c.jpg", given), !given);
    EXPECT_EQ(exists("c.jpg"), !given);
  }
  EXPECT_EQ(thumbnailWidth("b.jpg"), 0u);
}

// The fields that a process code may change, all of which are present or absent (9 is unchanged).
std::string afterProcessing(int code, uint32_t present, uint16_t fourthOfArea, uint16_t rendered) {
  ExifMetadata metadata = {};
  ImageIfdRecord& primary = metadata.primary;
  ExifIfdRecord& exif = metadata.exif;
  primary.hasOrientation = primary.hasYCbCrPositioning = exif.hasPixelXDimension = present;
  exif.hasPixelYDimension = exif.hasSubjectLocation = exif.hasSubjectArea = present;
  exif.hasCustomRendered = present;
  primary.orientation = primary.yCbCrPositioning = 9;
  exif.pixelXDimension = exif.pixelYDimension = 9;
  exif.customRendered = rendered;
  for (uint16_t i = 0; i < 2; ++i) exif.subjectLocation[i] = i + 5;
  for (uint16_t i = 0; i < 3; ++i) exif.subjectArea[i] = i + 1;
  exif.subjectArea[3] = fourthOfArea;
  const PRaster wide = picture(65538, 3);
  applyProcessing(code, wide, metadata);
  std::ostringstream text;
  text << primary.software << primary.hasSoftware << ' ' << primary.orientation
       << primary.yCbCrPositioning << ' ' << exif.pixelXDimension << exif.pixelYDimension << ' '
       << exif.subjectLocation[0] << exif.subjectLocation[1] << ' ';
  for (const uint16_t value : exif.subjectArea) text << value;
  text << ' ' << exif.customRendered;
  return text.str();
}

TEST_F(SaveFileTest, AdjustsTheRecordsToTheProcessing) {
  for (const int code : {-1, 0, 1, 7})
    EXPECT_EQ(afterProcessing(code, 1, 4, 0), "0 99 99 56 1234 0") << code;
  // Larger dimensions are cut to their low 16 bits.
  EXPECT_EQ(afterProcessing(2, 1, 4, 0), "Vexapict1 11 23 65 2143 0");
  EXPECT_EQ(afterProcessing(2, 1, 0, 0), "Vexapict1 11 23 65 2130 0");
  EXPECT_EQ(afterProcessing(3, 1, 4, 0), "Vexapict1 11 23 56 1234 0");
  for (const int code : {4, 5, 6}) {
    EXPECT_EQ(afterProcessing(code, 1, 4, 0), "Vexapict1 11 99 56 1234 1") << code;
    EXPECT_EQ(afterProcessing(code, 1, 4, 2), "Vexapict1 11 99 56 1234 2") << code;
  }
  for (const int code : {2, 3, 4})
    EXPECT_EQ(afterProcessing(code, 0, 4, 0), "Vexapict1 99 99 56 1234 0") << code;
  // This is applied by a save.
  makeSource("a.jpg", fullRecords());
  ASSERT_EQ(SaveProcessFile(path("a.jpg").c_str(), path("b.jpg").c_str(), 3, &image_, nullptr), 1);
  EXPECT_STREQ(recordsOf("b.jpg").primary.software, "Vexapict");
  EXPECT_EQ(recordsOf("b.jpg").exif.pixelXDimension, 64u);
}

}  // namespace
}  // namespace exifkeep::test
