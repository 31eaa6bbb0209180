#include "write/save_fixture.h"

#include <pxcodec32.h>

#include <algorithm>
#include <cstring>

#include "system/temporary_picture.h"

// The linker's option --wrap leads the library's calls here, and its own from here to the codec.
extern "C" int __real_AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                    CodecProgress progress);
extern "C" int __wrap_AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                    CodecProgress progress) {
  using exifkeep::test::codecFiles;
  const bool isThumbnail = std::strstr(path, exifkeep::temporaryJpegName) != nullptr;
  if (const auto& file = isThumbnail ? codecFiles.thumbnail : codecFiles.picture) {
    if (!file->empty()) std::ofstream(path, std::ios::binary) << *file;
    return !file->empty();
  }
  return __real_AllSaveDIBImg(path, image, offset, progress);
}

namespace exifkeep::test {

CodecFiles codecFiles;

PRaster picture(unsigned width, unsigned height, int bits) {
  PRaster image;
  image.CreateImage(PRaster::GetImageType(bits, 0), width, height, 0, 0, 2815, 5886);
  constexpr unsigned colours[] = {0x0000FF, 0x00FF00, 0xFF0000, 0xFFFFFF};
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x) {
      const unsigned quarter = 2 * y / height * 2 + 2 * x / width;
      image.SetPixel(int(x), int(y), bits == 24 ? colours[quarter] : 70 + 50 * quarter);
    }
  return image;
}

namespace {

// Bytes in memory and in the file are the same here: both are little-endian. Some texts fill their
// field to the last byte; what stands behind a zero byte is not text.
std::string fieldBytes(const TagRow& row) {
  constexpr unsigned powers[] = {1, 9, 81, 729, 6561};
  const bool isText =
      row.fetch == Fetch::bytes || row.fetch == Fetch::text || row.fetch == Fetch::shortText;
  const bool isFull = row.tag % 5 == 0 && row.fetch != Fetch::shortText;
  size_t size = row.fetch == Fetch::rawText ? row.limit : row.capacity;
  if (isText) size = isFull ? row.limit : 3 + row.tag % 6;
  std::string bytes;
  for (size_t i = 0; i < size; ++i) bytes += static_cast<char>('1' + row.tag / powers[i % 5] % 9);
  if (isText && row.type == TiffType::undefined) bytes += std::string("\0junk", 5);
  return row.fetch == Fetch::userComment ? "ASCII" : bytes;
}

void fillRecord(TagTable table, void* record) {
  for (const TagRow& row : table) {
    if (row.flag == noField) continue;
    const uint32_t present = 1;
    std::memcpy(static_cast<char*>(record) + row.flag, &present, sizeof present);
    const std::string bytes = fieldBytes(row);
    if (row.fetch != Fetch::makerNote)
      std::memcpy(static_cast<char*>(record) + row.field, bytes.data(), bytes.size());
  }
}

}  // namespace

ExifMetadata fullRecords() {
  static const uint8_t note[] = {0, 'n', 'o', 't', 'e', 1, 2, 'w', 'o', 'r', 'd', 's'};
  ExifMetadata metadata = {};
  fillRecord(imageTags, &metadata.primary);
  fillRecord(imageTags, &metadata.thumbnail);
  fillRecord(exifTags, &metadata.exif);
  fillRecord(gpsTags, &metadata.gps);
  metadata.exif.makerNote = note;
  metadata.exif.makerNoteLength = 7;
  metadata.exif.userComment = note + 7;
  metadata.exif.userCommentLength = 5;
  metadata.exif.isR98Interoperability = 1;
  return metadata;
}

namespace {

void expectSameFields(TagTable table, const void* written, const void* expected) {
  const auto at = [](const void* record, size_t offset, size_t size) {
    return std::string(static_cast<const char*>(record) + offset, size);
  };
  for (const TagRow& row : table) {
    if (row.flag == noField) continue;
    const std::string flag = at(written, row.flag, 4);
    EXPECT_EQ(flag, at(expected, row.flag, 4)) << "flag of tag " << row.tag;
    const bool isRenewed = row.fetch == Fetch::longValue || row.tag == tag::dateTime;
    if (flag[0] == 0 || isRenewed || row.fetch == Fetch::makerNote) continue;
    EXPECT_EQ(at(written, row.field, row.capacity), at(expected, row.field, row.capacity))
        << "tag " << row.tag;
  }
}

}  // namespace

void expectSameRecords(const ExifMetadata& written, const ExifMetadata& expected) {
  expectSameFields(imageTags, &written.primary, &expected.primary);
  expectSameFields(imageTags, &written.thumbnail, &expected.thumbnail);
  expectSameFields(exifTags, &written.exif, &expected.exif);
  expectSameFields(gpsTags, &written.gps, &expected.gps);
  const auto bytesOutside = [](const ExifIfdRecord& exif) {
    return std::string(exif.makerNote, exif.makerNote + exif.makerNoteLength) + '|' +
           std::string(exif.userComment, exif.userComment + exif.userCommentLength);
  };
  EXPECT_EQ(bytesOutside(written.exif), bytesOutside(expected.exif));
  EXPECT_EQ(written.exif.isR98Interoperability, expected.exif.isR98Interoperability);
}

ExifMetadata afterSave(ExifMetadata source) {
  for (ImageIfdRecord* image : {&source.primary, &source.thumbnail}) {
    image->hasArtist = image->hasPhotometricInterpretation = image->hasSamplesPerPixel = 0;
    image->hasPlanarConfiguration = image->hasStripOffsets = image->hasRowsPerStrip = 0;
    image->hasStripByteCounts = 0;
    if (!std::exchange(image->hasXResolution, 1)) image->xResolution = {72, 1};
    if (!std::exchange(image->hasYResolution, 1)) image->yResolution = {150, 1};
  }
  source.primary.hasDateTime = 1;
  source.thumbnail.hasExifIfdPointer = source.thumbnail.hasGpsIfdPointer = 0;
  source.exif.hasComponentsConfiguration = 0;
  source.gps.hasGpsDestLatitudeRef = source.gps.hasGpsDestLongitude = 0;
  for (uint8_t* bytes :
       {source.exif.oecf, source.gps.gpsProcessingMethod, source.gps.gpsAreaInformation}) {
    const size_t length = strnlen(reinterpret_cast<char*>(bytes), 256);
    std::memset(bytes + length, 0, 256 - length);
  }
  return source;
}

std::string segmentOf(const std::string& file) {
  if (file.size() < 6 || file.compare(0, 4, "\xFF\xD8\xFF\xE1") != 0) return {};
  return file.substr(2, size_t{2} + uint8_t(file[4]) * 256 + uint8_t(file[5]));
}

std::string withoutTimes(std::string bytes) {
  constexpr std::string_view form = "dddd:dd:dd dd:dd:dd";
  const auto fits = [](char found, char wanted) {
    return wanted == 'd' ? found >= '0' && found <= '9' : found == wanted;
  };
  const auto next = [&](auto from) {
    return std::search(from, bytes.end(), form.begin(), form.end(), fits);
  };
  for (auto at = next(bytes.begin()); at != bytes.end(); at = next(at))
    at = std::fill_n(at, form.size(), 'T');
  return bytes;
}

uint32_t fingerprint(const std::string& bytes) {
  uint32_t hash = 2166136261;
  for (const unsigned char byte : withoutTimes(bytes)) hash = (hash ^ byte) * 16777619;
  return hash;
}

}  // namespace exifkeep::test
