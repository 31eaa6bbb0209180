#include "write/jpeg_segment.h"

#include "probe/disk_file.h"
#include "write/jpeg_rows.h"
#include "write/jpeg_stream.h"
#include "write/row_context.h"
#include "write/thumbnail.h"

namespace exifkeep {

namespace {

// Marker, length, identifier; then the TIFF header with IFD0 right behind it.
constexpr uint8_t segmentHead[] = {0xFF, 0xE1, 0,   0,  'E', 'x', 'i', 'f', 0,
                                   0,    'I',  'I', 42, 0,   8,   0,   0,   0};
constexpr uint32_t tiffHeader = 10;
constexpr uint32_t lengthField = 2;

enum class Outcome { done, tooLarge, failed };

// The directories of one segment on their way into a block.
class SegmentWriter {
 public:
  explicit SegmentWriter(uint8_t* block) : block_(block), writer_(block, tiffHeader) {
    writer_.append(segmentHead, sizeof segmentHead);
  }

  void writePrimary(OutputRows rows, const void* record, const RowContext& context) {
    primary_ = writer_.writeDirectory(rows, record, context);
  }

  // The Exif directory and, where it points to one, the interoperability directory behind it.
  void writeExif(OutputRows rows, const ExifIfdRecord& exif, const RowContext& context,
                 bool hasInteroperability) {
    const uint32_t directory = writer_.writeDirectory(rows, &exif, context);
    point(primary_, tag::exifIfdPointer, directory);
    if (!hasInteroperability) return;
    point(directory, tag::interoperabilityIfdPointer,
          writer_.writeDirectory(interoperabilityRows, nullptr, context));
  }

  void writeGps(const GpsIfdRecord& gps, const RowContext& context) {
    point(primary_, tag::gpsIfdPointer, writer_.writeDirectory(gpsRows, &gps, context));
  }

  void writeThumbnail(OutputRows rows, const void* record, const RowContext& context) {
    thumbnail_ = writer_.writeDirectory(rows, record, context);
    writer_.setNextDirectory(primary_, thumbnail_);
  }

  bool directoriesFit() const { return !writer_.hasFailed(); }

  // Puts the thumbnail file, without its APP0 segment, behind the directories.
  bool embedThumbnail(const char* path);

  // REQUIRES: nothing has failed.
  void finish() {
    const uint32_t length = writer_.length() - lengthField;
    block_[lengthField] = static_cast<uint8_t>(length >> 8);
    block_[lengthField + 1] = static_cast<uint8_t>(length);
  }

 private:
  void point(uint32_t directory, uint16_t tag, uint32_t target) {
    writer_.setValue(directory, tag, writer_.tiffOffset(target));
  }

  uint8_t* block_;
  DirectoryWriter writer_;
  uint32_t primary_ = 0;
  uint32_t thumbnail_ = 0;
};

bool SegmentWriter::embedThumbnail(const char* path) {
  constexpr size_t soiSize = 2;
  DiskFile file = DiskFile::openForWriting(path);
  // The file's whole size counts, its APP0 segment included.
  if (!file.isOpen() || file.size() > DirectoryWriter::blockSize) return false;
  const auto size = static_cast<uint32_t>(file.size());
  uint8_t* to = writer_.room(size);
  uint8_t head[6];
  if (!to || file.readAt(0, head, sizeof head) != sizeof head) return false;
  const bool hasApp0 = head[2] == 0xFF && head[3] == 0xE0;
  const uint32_t app0Size = hasApp0 ? head[4] * 256u + head[5] + 2 : 0;
  if (app0Size > size - soiSize) return false;
  const uint32_t length = size - app0Size;
  copyBytes(to, head, soiSize);
  if (file.readAt(soiSize + app0Size, to + soiSize, length - soiSize) != length - soiSize)
    return false;
  point(thumbnail_, tag::jpegInterchangeFormat, writer_.length());
  writer_.setValue(thumbnail_, tag::jpegInterchangeFormatLength, length);
  writer_.advance(length);
  return true;
}

// Writes a segment into a new block: `directories` fills it, then comes the thumbnail.
template <class Directories>
Outcome writeSegment(GlobalBlock& block, const ThumbnailFile& thumbnail, Directories directories) {
  block = GlobalBlock(DirectoryWriter::blockSize);
  const BlockLock lock(block);
  if (!lock.bytes()) return Outcome::failed;
  SegmentWriter segment(lock.bytes());
  directories(segment);
  if (!segment.directoriesFit()) return Outcome::tooLarge;
  if (thumbnail.isWritten() && !segment.embedThumbnail(thumbnail.path())) return Outcome::failed;
  segment.finish();
  return Outcome::done;
}

// Tries the Exif record as it is and then without its largest values.
template <class Directories>
GlobalBlock buildSegment(const ExifIfdRecord& exif, const ThumbnailFile& thumbnail,
                         Directories directories) {
  ShrinkingRecord shrinking(exif);
  for (;;) {
    GlobalBlock block;
    const Outcome outcome = writeSegment(block, thumbnail, [&](SegmentWriter& segment) {
      directories(segment, shrinking.record());
    });
    if (outcome == Outcome::done) return block;
    if (outcome == Outcome::failed || !shrinking.shrink()) return {};
  }
}

void writeJpegThumbnail(ThumbnailFile& file, const ImageCodecBridge& codec, const PRaster& picture,
                        PRaster* hostThumbnail) {
  file.write(codec, picture, hostThumbnail);
  if (file.isWritten()) compactJpegStream(file.path());
}

}  // namespace

GlobalBlock buildSegmentFromRecords(const ImageCodecBridge& codec, const PRaster& picture,
                                    PRaster* hostThumbnail, const ExifIfdRecord* exif,
                                    const ImageIfdRecord* primary, const ImageIfdRecord* thumbnail,
                                    const GpsIfdRecord* gps) {
  if (!exif || !primary) return {};
  ThumbnailFile file(temporaryJpegName);
  if (thumbnail) writeJpegThumbnail(file, codec, picture, hostThumbnail);
  const RowContext context = contextOf(picture);
  return buildSegment(*exif, file, [&](SegmentWriter& segment, const ExifIfdRecord& fitting) {
    segment.writePrimary(primaryRows, primary, context);
    segment.writeExif(exifRows, fitting, context, fitting.isR98Interoperability);
    if (primary->hasGpsIfdPointer && gps) segment.writeGps(*gps, context);
    if (file.isWritten()) segment.writeThumbnail(thumbnailRows, thumbnail, context);
  });
}

GlobalBlock buildSegmentWithDefaults(const ImageCodecBridge& codec, const PRaster& picture,
                                     PRaster* hostThumbnail, const ExifIfdRecord& exif,
                                     const ImageIfdRecord& primary) {
  ThumbnailFile file(temporaryJpegName);
  writeJpegThumbnail(file, codec, picture, hostThumbnail);
  const RowContext context = contextOf(picture);
  RowContext ofThumbnail = context;
  const bool isHosts = hostThumbnail && !hostThumbnail->IsEmpty();
  ofThumbnail.xResolution = isHosts ? resolutionDefault(hostThumbnail->GetDpmX()) : Rational{72, 1};
  ofThumbnail.yResolution = isHosts ? resolutionDefault(hostThumbnail->GetDpmY()) : Rational{72, 1};
  return buildSegment(exif, file, [&](SegmentWriter& segment, const ExifIfdRecord& fitting) {
    segment.writePrimary(newPrimaryRows, &primary, context);
    segment.writeExif(newExifRows, fitting, context, true);
    if (file.isWritten()) segment.writeThumbnail(newThumbnailRows, nullptr, ofThumbnail);
  });
}

uint32_t segmentSize(const uint8_t* segment) {
  return segment[lengthField] * 256u + segment[lengthField + 1] + lengthField;
}

}  // namespace exifkeep
