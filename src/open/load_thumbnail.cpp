// SPDX-License-Identifier: MIT
// Reads nine fields of the thumbnail directory, then the thumbnail. Lengths are checked against the
// file and sizes against fixed limits before anything is allocated.
#include "open/load_thumbnail.h"

#include <algorithm>
#include <cstring>

#include "read/read_metadata.h"
#include "read/tag_tables.h"
#include "system/global_block.h"
#include "system/temporary_picture.h"

namespace exifkeep {

namespace {

// Values of Compression and PhotometricInterpretation (TIFF 6.0, sections 8 and 22).
constexpr uint32_t noCompression = 1, jpegCompression = 6;
constexpr uint32_t whiteIsZero = 0, rgb = 2, paletteColour = 3, transparencyMask = 4, yCbCr = 6;

struct Field {
  uint32_t value;         // a SHORT from the value field's first two bytes, other types from all
  uint32_t position = 0;  // all four bytes, whatever the type
  uint32_t count = 0;
  bool isPresent = false;
};

// The values here are defaults for fields that the directory lacks.
struct ThumbnailFields {
  Field imageWidth{0};
  Field imageLength{0};
  Field bitsPerSample{0};
  Field compression{noCompression};
  Field photometricInterpretation{rgb};
  Field stripOffsets{0};
  Field samplesPerPixel{0};
  Field jpegInterchangeFormat{0};
  Field jpegInterchangeFormatLength{0};
};

struct FieldRow {
  uint16_t tag;
  Field ThumbnailFields::*field;
};

constexpr FieldRow fieldRows[] = {
    {tag::imageWidth, &ThumbnailFields::imageWidth},
    {tag::imageLength, &ThumbnailFields::imageLength},
    {tag::bitsPerSample, &ThumbnailFields::bitsPerSample},
    {tag::compression, &ThumbnailFields::compression},
    {tag::photometricInterpretation, &ThumbnailFields::photometricInterpretation},
    {tag::stripOffsets, &ThumbnailFields::stripOffsets},
    {tag::samplesPerPixel, &ThumbnailFields::samplesPerPixel},
    {tag::jpegInterchangeFormat, &ThumbnailFields::jpegInterchangeFormat},
    {tag::jpegInterchangeFormatLength, &ThumbnailFields::jpegInterchangeFormatLength},
};

void storeField(const ExifFile& file, const IfdEntry& entry, ThumbnailFields& fields) {
  const bool isShort = entry.type == static_cast<uint16_t>(TiffType::short_);
  if (!entry.hasValueBytes(isShort ? 2 : 4)) return;
  const uint32_t whole = file.toLong(entry.value);
  for (const FieldRow& row : fieldRows)
    if (row.tag == entry.tag)
      fields.*row.field = {isShort ? file.toShort(entry.value) : whole, whole, entry.count, true};
}

// False if thumbnails of this kind are not shown: palette colours or a mask.
bool readFields(ExifFile& file, uint64_t directory, ThumbnailFields& fields) {
  DirectoryEntries entries(file, directory);
  for (IfdEntry entry; entries.next(entry);) {
    storeField(file, entry, fields);
    const uint32_t photometric = fields.photometricInterpretation.value;
    if (photometric == paletteColour || photometric == transparencyMask) return false;
  }
  return true;
}

void makeEmpty(PRaster& image) {
  if (!image.IsEmpty()) image.DeleteImage(1);
}

// A directory without Compression but with the position and length of a JPEG stream is also that of
// a JPEG thumbnail. Intended: saves copy Compression only if the source had it, and the thumbnail
// they embed must be found again.
bool isJpegThumbnail(const ThumbnailFields& fields) {
  if (fields.compression.isPresent) return fields.compression.value == jpegCompression;
  return fields.jpegInterchangeFormat.value != 0 && fields.jpegInterchangeFormatLength.value != 0;
}

// The codec goes by the first bytes and would decode any format it knows, but a JPEG thumbnail must
// be JPEG.
bool isJpegStream(ExifFile& file, uint64_t position) {
  static constexpr uint8_t start[] = {0xFF, 0xD8, 0xFF};  // SOI and a marker (ITU-T T.81, B.1.1.3)
  uint8_t bytes[sizeof start];
  return file.readAt(position, bytes, sizeof bytes) == sizeof bytes &&
         std::memcmp(bytes, start, sizeof start) == 0;
}

// Copies up to `length` bytes, as many as the file has, into a new file. REQUIRES: the file has
// some there.
bool copyToNewFile(ExifFile& file, uint64_t position, uint64_t length, const char* path) {
  const uint64_t end = std::max(file.size(), position);
  const auto held = static_cast<size_t>(std::min(length, end - position));
  const GlobalBlock block(held);
  const BlockLock lock(block);
  if (!lock.bytes()) return false;
  DiskFile target = DiskFile::createNew(path);
  if (!target.isOpen()) return false;
  file.readAt(position, lock.bytes(), held);
  return target.writeAt(0, lock.bytes(), held) && target.close();
}

// Copies the pixels of the decoded image but not its resolution.
bool showDecoded(const PRaster& decoded, PRaster& thumbnail) {
  return thumbnail.CreateImage(decoded.GetImageType(), decoded.GetImageWidth(),
                               decoded.GetImageHeight()) &&
         thumbnail.CopyImage(decoded);
}

bool loadJpegThumbnail(const ImageCodecBridge& codec, ExifFile& file, const ThumbnailFields& fields,
                       PRaster& thumbnail) {
  const uint32_t offset = fields.jpegInterchangeFormat.value;
  const uint32_t length = fields.jpegInterchangeFormatLength.value;
  if (offset == 0 || length == 0) return false;
  const uint64_t position = file.positionOf(offset);
  if (!isJpegStream(file, position)) {
    makeEmpty(thumbnail);
    return false;
  }
  const TemporaryPicture copy(temporaryJpegName);
  const char* path = copy.path().c_str();
  if (!copyToNewFile(file, position, std::min(length, maxJpegBytes), path)) return false;
  const auto decoded = codec.loadImageFile(path, maxThumbnailPixels);
  makeEmpty(thumbnail);
  return decoded && showDecoded(*decoded, thumbnail);
}

// Without SamplesPerPixel, the number of samples is the count of BitsPerSample if that is three or
// more. Intended: a save may drop SamplesPerPixel but keeps BitsPerSample.
uint32_t sampleCount(const ThumbnailFields& fields) {
  constexpr uint32_t fewestColours = 3;
  const uint32_t listed = fields.bitsPerSample.count;
  if (fields.samplesPerPixel.isPresent || listed < fewestColours)
    return fields.samplesPerPixel.value;
  return listed;
}

// Bits per pixel. The values for several samples do not fit into the entry, which then has their
// position; the first is taken for all.
uint16_t bitCountOf(ExifFile& file, const ThumbnailFields& fields) {
  const uint32_t samples = sampleCount(fields);
  if (samples <= 1) return static_cast<uint16_t>(fields.bitsPerSample.value);
  uint16_t first = 0;
  file.read(file.positionOf(fields.bitsPerSample.position), first);
  return static_cast<uint16_t>(samples * first);
}

// Uncompressed pixels are read in units of one pixel, or of eight whose bits share a byte. `store`
// sets a unit's pixels from column x on.
struct PixelLayout {
  int imageType;
  uint32_t unitBytes;
  uint32_t unitPixels;
  void (*store)(PRaster& image, int x, int y, const uint8_t* unit);
};

void storeColour(PRaster& image, int x, int y, const uint8_t* unit) {
  image.SetPixel(x, y, uint32_t{unit[2]} << 16 | uint32_t{unit[1]} << 8 | unit[0]);
}

void storeLevel(PRaster& image, int x, int y, const uint8_t* unit) {
  image.SetPixel(x, y, *unit);
}

// The padding bits at the end of a row are outside the image, where SetPixel does nothing.
void storeBits(PRaster& image, int x, int y, const uint8_t* unit) {
  for (int bit = 0; bit < 8; ++bit) image.SetPixel(x + bit, y, (*unit << bit & 0x80) ? 255 : 0);
}

void storeInvertedBits(PRaster& image, int x, int y, const uint8_t* unit) {
  const auto inverted = static_cast<uint8_t>(~*unit);
  storeBits(image, x, y, &inverted);
}

// Any bit count other than 24 and 8 is read as 1 bit per pixel, but only a count of 1 makes a 1-bit
// image. Intended: hosts have always been given the others as 24-bit images.
PixelLayout layoutOf(uint16_t bitCount, uint32_t photometric) {
  if (bitCount == 24) return {PRaster::type24Bit, 3, 1, storeColour};
  if (bitCount == 8) return {PRaster::type8Bit, 1, 1, storeLevel};
  const int imageType = bitCount == 1 ? PRaster::type1Bit : PRaster::type24Bit;
  return {imageType, 1, 8, photometric == whiteIsZero ? storeInvertedBits : storeBits};
}

// Reads a strip unit by unit through a buffer.
class UnitStream {
 public:
  // REQUIRES: `file` outlives this object.
  UnitStream(ExifFile& file, uint64_t position, uint32_t unitBytes)
      : file_(file), position_(position), unitBytes_(unitBytes) {}

  // Null if the file does not have the whole unit.
  const uint8_t* next() {
    if (used_ == held_) refill();
    if (held_ - used_ < unitBytes_) return nullptr;
    used_ += unitBytes_;
    return buffer_ + used_ - unitBytes_;
  }

 private:
  static constexpr size_t bufferSize = size_t{3} << 12;  // units are of 1 or 3 bytes

  void refill() {
    held_ = file_.readAt(position_, buffer_, bufferSize);
    position_ += held_;
    used_ = 0;
  }

  ExifFile& file_;
  uint64_t position_;
  size_t unitBytes_;
  size_t held_ = 0;
  size_t used_ = 0;
  uint8_t buffer_[bufferSize];
};

// Pixels that cannot be read remain black.
void readPixels(UnitStream& units, const PixelLayout& layout, PRaster& image) {
  for (unsigned y = 0; y < image.GetImageHeight(); ++y)
    for (unsigned x = 0; x < image.GetImageWidth(); x += layout.unitPixels) {
      const uint8_t* unit = units.next();
      if (!unit) return;
      layout.store(image, static_cast<int>(x), static_cast<int>(y), unit);
    }
}

// Reads all strips as one, from the position of the first. Missing pixels remain black.
bool loadUncompressedThumbnail(ExifFile& file, const ThumbnailFields& fields, PRaster& thumbnail) {
  if (fields.photometricInterpretation.value == yCbCr) return false;
  const PixelLayout layout =
      layoutOf(bitCountOf(file, fields), fields.photometricInterpretation.value);
  const uint32_t width = fields.imageWidth.value, height = fields.imageLength.value;
  makeEmpty(thumbnail);
  if (uint64_t{width} * height > maxThumbnailPixels ||
      !thumbnail.CreateImage(layout.imageType, width, height))
    return false;
  UnitStream units(file, file.positionOf(fields.stripOffsets.value), layout.unitBytes);
  readPixels(units, layout, thumbnail);
  return true;
}

}  // namespace

bool loadThumbnail(ExifReader& reader, ExifFile& file, PRaster& thumbnail) {
  const int32_t directory = locateThumbnailDirectory(reader, file);
  ThumbnailFields fields;
  if (directory <= 0 || !readFields(file, static_cast<uint32_t>(directory), fields)) return false;
  return isJpegThumbnail(fields) ? loadJpegThumbnail(reader.codec(), file, fields, thumbnail)
                                 : loadUncompressedThumbnail(file, fields, thumbnail);
}

}  // namespace exifkeep
