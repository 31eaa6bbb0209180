// Pictures and files for the codec's tests: images filled with a repeatable pattern, whole files as
// bytes, and loading as a caller of the codec does it.
#pragma once

#include <load_picture.h>
#include <praster.h>
#include <pxcodec32.h>

#include <optional>
#include <vector>

#include "platform/scratch.h"

using Bytes = std::vector<unsigned char>;

#if defined(_WIN32)
inline constexpr const char* temporaryVariable = "TMP";
#else
inline constexpr const char* temporaryVariable = "TMPDIR";
#endif

// A test whose temporary files are in a folder of its own, where nothing may stay.
class CodecTest : public exifkeep::test::ScratchTest {
 protected:
  CodecTest() {
    if (const char* before = std::getenv(temporaryVariable)) before_ = before;
    std::filesystem::create_directory(temporary_);
    exifkeep::test::setVariable(temporaryVariable, temporary_.string());
  }
  ~CodecTest() override {
    EXPECT_TRUE(std::filesystem::is_empty(temporary_)) << "something stays in the temporary folder";
    std::filesystem::remove_all(temporary_);
    if (before_.empty())
      exifkeep::test::unsetVariable(temporaryVariable);
    else
      exifkeep::test::setVariable(temporaryVariable, before_);
  }

 private:
  const std::filesystem::path temporary_ =
      std::filesystem::path(path("x")).parent_path().string() + "-temporary";
  std::string before_;
};

// A smooth pattern that differs in every channel and corner; palette images get colours.
inline PRaster patterned(int bits, unsigned width, unsigned height, bool coloured = false) {
  PRaster image;
  EXPECT_EQ(image.CreateImage(PRaster::GetImageType(bits, 0), width, height), 1);
  if (coloured)
    for (unsigned i = 0; i < (1u << bits); ++i)
      image.palette()[i] = {BYTE(255 - i), BYTE(i / 2 + 3), BYTE(i), 0};
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x) {
      const unsigned across = 255 * x / width, down = 255 * y / height;
      const unsigned value = bits == 24  ? across | down << 8 | (255 - across) << 16
                             : bits == 8 ? (across + down) / 2
                                         : (x * x + y) % 3 == 0;
      image.SetPixel(int(x), int(y), value);
    }
  return image;
}

inline int save(const std::string& path, PRaster& image) {
  tagLmmInfo info;
  image.GetLmmInfo(info);
  return AllSaveDIBImg(path.c_str(), &info, image.GetLmmOffset(), nullptr);
}

// What the image held before is gone, whether the file is read or not.
inline std::optional<PRaster> load(const std::string& path) {
  PRaster image = patterned(1, 1, 1);
  if (exifkeep::loadPicture(path.c_str(), image)) return image;
  EXPECT_TRUE(image.IsEmpty());
  return std::nullopt;
}

inline Bytes bytesOf(const std::string& path) {
  const std::string bytes = exifkeep::test::readFile(path);
  return {bytes.begin(), bytes.end()};
}

inline void writeBytes(const std::string& path, const Bytes& bytes) {
  exifkeep::test::writeFile(path, {bytes.begin(), bytes.end()});
}

// The largest difference of any channel between two images, both through their palettes.
inline int largestDifference(PRaster& a, PRaster& b) {
  if (a.width() != b.width() || a.height() != b.height()) return 256;
  a.ConvertTo24bit();
  b.ConvertTo24bit();
  int largest = 0;
  for (unsigned y = 0; y < a.height(); ++y)
    for (unsigned i = 0; i < a.width() * 3; ++i)
      largest = std::max(largest, std::abs(a.row(y)[i] - b.row(y)[i]));
  return largest;
}
