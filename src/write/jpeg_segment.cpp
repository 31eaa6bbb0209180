#include "write/jpeg_segment.h"

#include "system/disk_file.h"
#include "write/jpeg_rows.h"
#include "write/jpeg_stream.h"
#include "write/metadata_block.h"
#include "write/thumbnail.h"

namespace exifkeep {

namespace {

// Marker, length, identifier; then the TIFF header with IFD0 right behind it.
constexpr uint8_t segmentStart[] = {0xFF, 0xE1, 0,   0,  'E', 'x', 'i', 'f', 0,
                                    0,    'I',  'I', 42, 0,   8,   0,   0,   0};
constexpr BlockHead segmentHead{segmentStart, 10};
constexpr uint32_t lengthField = 2;

// Puts the thumbnail file, without its APP0 segment, behind the directories.
bool embedThumbnail(MetadataWriter& segment, const char* path) {
  constexpr size_t soiSize = 2;
  DiskFile file = DiskFile::openForWriting(path);
  // The file's whole size counts, its APP0 segment included.
  if (!file.isOpen() || file.size() > DirectoryWriter::blockSize) return false;
  const auto size = static_cast<uint32_t>(file.size());
  uint8_t* to = segment.thumbnailRoom(size);
  uint8_t head[6];
  if (!to || file.readAt(0, head, sizeof head) != sizeof head) return false;
  const bool hasApp0 = head[2] == 0xFF && head[3] == 0xE0;
  const uint32_t app0Size = hasApp0 ? head[4] * 256u + head[5] + 2 : 0;
  if (app0Size > size - soiSize) return false;
  const uint32_t length = size - app0Size;
  copyBytes(to, head, soiSize);
  if (file.readAt(soiSize + app0Size, to + soiSize, length - soiSize) != length - soiSize)
    return false;
  segment.endThumbnail(tag::jpegInterchangeFormat, length);
  segment.setThumbnail(tag::jpegInterchangeFormatLength, length);
  return true;
}

template <class Directories>
GlobalBlock buildSegment(const ExifIfdRecord& exif, const ThumbnailFile& thumbnail,
                         Directories directories) {
  return buildMetadataBlock(
      segmentHead, exif, directories, [&](MetadataWriter& segment, uint8_t* bytes) {
        if (thumbnail.isWritten() && !embedThumbnail(segment, thumbnail.path())) return false;
        const uint32_t length = segment.length() - lengthField;
        bytes[lengthField] = static_cast<uint8_t>(length >> 8);
        bytes[lengthField + 1] = static_cast<uint8_t>(length);
        return true;
      });
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
  return buildSegment(*exif, file, [&](MetadataWriter& segment, const ExifIfdRecord& fitting) {
    segment.writePrimary(primaryRows, *primary, context);
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
  return buildSegment(exif, file, [&](MetadataWriter& segment, const ExifIfdRecord& fitting) {
    segment.writePrimary(newPrimaryRows, primary, context);
    segment.writeExif(newExifRows, fitting, context, true);
    if (file.isWritten()) segment.writeThumbnail(newThumbnailRows, nullptr, ofThumbnail);
  });
}

uint32_t segmentSize(const uint8_t* segment) {
  return segment[lengthField] * 256u + segment[lengthField + 1] + lengthField;
}

}  // namespace exifkeep
