#include "write/save_fixture.h"

#include <dlfcn.h>
#include <pxcodec32.h>

#include <cstring>

#include "imageio/temporary_picture.h"
#include "read/read_metadata.h"

// Takes the codec's place when the program is linked, and calls it.
int AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                  CodecProgress progress) {
  using exifkeep::test::codecFiles;
  const bool isThumbnail = std::strstr(path, exifkeep::temporaryJpegName) != nullptr;
  if (const auto& file = isThumbnail ? codecFiles.thumbnail : codecFiles.picture) {
    if (!file->empty()) std::ofstream(path, std::ios::binary) << *file;
    return !file->empty();
  }
  static const auto save =
      reinterpret_cast<decltype(&AllSaveDIBImg)>(dlsym(RTLD_NEXT, "AllSaveDIBImg"));
  return save(path, image, offset, progress);
}

namespace exifkeep::test {

CodecFiles codecFiles;

SaveTest::~SaveTest() {
  codecFiles = {};
  clearFailures();
}

std::string SaveTest::read(const std::string& name) const {
  std::ifstream file(path(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void SaveTest::write(const std::string& name, const std::string& bytes) const {
  std::ofstream(path(name), std::ios::binary) << bytes;
}

ExifMetadata SaveTest::recordsOf(const std::string& name) {
  ExifMetadata metadata = {};
  EXPECT_TRUE(readExifMetadata(readers_.emplace_back(), path(name).c_str(), metadata.exif,
                               metadata.primary, &metadata.thumbnail, &metadata.gps))
      << name;
  return metadata;
}

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

std::string temporaryThumbnail() {
  char directory[256];
  GetTempPathA(sizeof directory, directory);
  return std::filesystem::path(directory) / temporaryJpegName;
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

const Entry* Directory::find(unsigned tag) const {
  for (const Entry& entry : entries)
    if (entry.tag == tag) return &entry;
  return nullptr;
}

namespace {

unsigned number(const std::string& bytes, size_t at, size_t size) {
  unsigned value = 0;
  EXPECT_LE(at + size, bytes.size());
  while (size-- > 0 && at + size < bytes.size())
    value = value << 8 | static_cast<unsigned char>(bytes[at + size]);
  return value;
}

bool liesInEntry(unsigned tag, unsigned type, unsigned count) {
  return type == 4 || (type == 3 && count == 1) || (type == 7 && tag != 37500 && tag != 37510);
}

Directory readDirectory(const std::string& tiff, unsigned at, bool isInteroperability = false) {
  constexpr unsigned sizes[] = {0, 0, 1, 2, 4, 8, 0, 1, 0, 0, 8};
  const unsigned count = number(tiff, at, 2);
  Directory directory = {at, number(tiff, at + 2 + 12 * count, 4), at + 2 + 12 * count + 4, {}};
  for (unsigned i = 0; i < count; ++i) {
    const unsigned from = at + 2 + 12 * i;
    const unsigned tag = number(tiff, from, 2), type = number(tiff, from + 2, 2);
    const unsigned values = number(tiff, from + 4, 4), size = values * sizes[type % 11];
    unsigned valueAt = from + 8, area = 4;
    if (!isInteroperability && !liesInEntry(tag, type, values)) {
      valueAt = directory.end;
      area = size + size % 2;
      EXPECT_EQ(number(tiff, from + 8, 4), valueAt) << "tag " << tag;
      EXPECT_EQ(valueAt % 2, 0u) << "tag " << tag;
      directory.end += area;
    }
    EXPECT_LE(size, area) << "tag " << tag;
    EXPECT_LE(valueAt + area, tiff.size()) << "tag " << tag;
    if (valueAt + area > tiff.size()) break;
    directory.entries.push_back({tag, values, tiff.substr(valueAt, size)});
    EXPECT_EQ(tiff.substr(valueAt + size, area - size), std::string(area - size, '\0'))
        << "padding of tag " << tag;
  }
  return directory;
}

// The directory that a pointer names, which must be the next one in the file.
std::optional<Directory> readNext(const std::string& tiff, unsigned pointer, unsigned& end,
                                  bool isInteroperability = false) {
  if (pointer == 0) return std::nullopt;
  EXPECT_EQ(pointer, end);
  const Directory directory = readDirectory(tiff, end, isInteroperability);
  EXPECT_EQ(directory.next, 0u);
  end = directory.end;
  return directory;
}

unsigned pointerIn(const Directory& directory, unsigned tag) {
  const Entry* entry = directory.find(tag);
  return entry ? number(entry->data, 0, 4) : 0;
}

}  // namespace

Segment parseSegment(const std::string& bytes) {
  EXPECT_EQ(bytes.substr(0, 2) + bytes.substr(4, 14), std::string("\xFF\xE1"
                                                                  "Exif\0\0II*\0\x08\0\0\0",
                                                                  16));
  EXPECT_EQ(number({bytes[3], bytes[2]}, 0, 2) + 2, bytes.size());
  const std::string tiff = bytes.substr(10);
  Segment segment;
  segment.primary = readDirectory(tiff, 8);
  unsigned end = segment.primary.end;
  // The Exif directory is there whether or not IFD0 has its pointer.
  const Entry* exif = segment.primary.find(34665);
  segment.exif = *readNext(tiff, exif ? number(exif->data, 0, 4) : end, end);
  segment.interoperability = readNext(tiff, pointerIn(segment.exif, 40965), end, true);
  segment.gps = readNext(tiff, pointerIn(segment.primary, 34853), end);
  segment.thumbnail = readNext(tiff, segment.primary.next, end);
  if (segment.thumbnail) {
    EXPECT_EQ(pointerIn(*segment.thumbnail, 513), end);
    segment.thumbnailJpeg = tiff.substr(end, pointerIn(*segment.thumbnail, 514));
    end += pointerIn(*segment.thumbnail, 514);
  }
  EXPECT_EQ(end, tiff.size());
  return segment;
}

std::string segmentOf(const std::string& file) {
  if (file.size() < 6 || file.compare(0, 4, "\xFF\xD8\xFF\xE1") != 0) return {};
  return file.substr(2, number({file[5], file[4]}, 0, 2) + 2);
}

namespace {

std::string withoutTime(std::string bytes, const std::string& time) {
  for (size_t at = 0; (at = bytes.find(time, at)) != std::string::npos;)
    bytes.replace(at, time.size(), time.size(), 'T');
  return bytes;
}

}  // namespace

std::string withoutTimes(std::string bytes, const Segment& segment) {
  return withoutTime(std::move(bytes), segment.primary.find(306)->data.substr(0, 19));
}

uint32_t fingerprint(std::string bytes, const std::string& time) {
  uint32_t hash = 2166136261;
  for (const unsigned char byte : withoutTime(std::move(bytes), time))
    hash = (hash ^ byte) * 16777619;
  return hash;
}

}  // namespace exifkeep::test
