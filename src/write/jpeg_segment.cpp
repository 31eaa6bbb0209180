// SPDX-License-Identifier: MIT
#include "write/jpeg_segment.h"

#include <algorithm>
#include <cstring>

#include "imageio/praster_block.h"
#include "system/temporary_picture.h"
#include "write/jpeg_rows.h"
#include "write/jpeg_stream.h"
#include "write/metadata_block.h"
#include "write/thumbnail.h"

namespace exifkeep {

namespace {

// Marker, length and identifier, then the TIFF header, directly followed by IFD0.
constexpr uint8_t segmentStart[] = {0xFF, 0xE1, 0,   0,  'E', 'x', 'i', 'f', 0,
                                    0,    'I',  'I', 42, 0,   8,   0,   0,   0};
constexpr BlockHead segmentHead{segmentStart, 10};
constexpr uint32_t lengthField = 2;

// Appends the thumbnail file, without its APP0 segment, to the directories.
bool embedThumbnail(MetadataBlock& segment, const EncodedPicture& thumbnail) {
  constexpr size_t soiSize = 2;
  const JpegStream stream = compactJpegStream(thumbnail);
  size_t whole = 0;
  for (const Piece& piece : stream.pieces()) whole += piece.bytes.size();
  // The limit applies to the size with the APP0 segment.
  if (whole <= soiSize || whole > DirectoryWriter::blockSize) return false;
  const auto size = static_cast<uint32_t>(whole);
  uint8_t* to = segment.thumbnailRoom(size);
  if (!to) return false;
  uint8_t* next = to;
  for (const Piece& piece : stream.pieces()) next = std::ranges::copy(piece.bytes, next).out;
  const size_t app0Size = app0SizeAt({to + soiSize, size - soiSize});
  if (app0Size > size - soiSize) return false;
  const auto length = static_cast<uint32_t>(size - app0Size);
  std::memmove(to + soiSize, to + soiSize + app0Size, length - soiSize);
  std::memset(to + length, 0, app0Size);
  segment.endThumbnail(tag::jpegInterchangeFormat, length);
  segment.setThumbnail(tag::jpegInterchangeFormatLength, length);
  return true;
}

GlobalBlock buildSegment(const BlockContents& contents, const EncodedThumbnail& thumbnail) {
  MetadataBlock segment;
  if (!segment.write(segmentHead, contents)) return {};
  if (thumbnail.isTaken() && !embedThumbnail(segment, thumbnail.file())) return {};
  const uint32_t length = segment.length() - lengthField;
  segment.bytes()[lengthField] = static_cast<uint8_t>(length >> 8);
  segment.bytes()[lengthField + 1] = static_cast<uint8_t>(length);
  return segment.release();
}

}  // namespace

GlobalBlock buildSegmentFromRecords(const ImageCodecBridge& codec, const PRaster& picture,
                                    PRaster* hostThumbnail, const ExifMetadata& metadata) {
  EncodedThumbnail encoded(temporaryJpegName);
  if (!encoded.encode(codec, picture, hostThumbnail)) return {};
  const RowContext context = contextOf(picture);
  return buildSegment({.primaryRows = primaryRows,
                       .primary = metadata.primary,
                       .exifRows = exifRows,
                       .exif = metadata.exif,
                       .hasInteroperability = metadata.exif.isR98Interoperability != 0,
                       .gps = metadata.primary.hasGpsIfdPointer ? &metadata.gps : nullptr,
                       .thumbnailRows = encoded.isTaken() ? thumbnailRows : OutputRows(),
                       .thumbnail = &metadata.thumbnail,
                       .context = context,
                       .ofThumbnail = context},
                      encoded);
}

GlobalBlock buildSegmentWithDefaults(const ImageCodecBridge& codec, const PRaster& picture,
                                     PRaster* hostThumbnail, const ExifIfdRecord& exif,
                                     const ImageIfdRecord& primary) {
  EncodedThumbnail encoded(temporaryJpegName);
  if (!encoded.encode(codec, picture, hostThumbnail)) return {};
  const RowContext context = contextOf(picture);
  RowContext ofThumbnail = context;
  const bool isHosts = !isMissing(hostThumbnail);
  ofThumbnail.xResolution = isHosts ? resolutionDefault(hostThumbnail->GetDpmX()) : Rational{72, 1};
  ofThumbnail.yResolution = isHosts ? resolutionDefault(hostThumbnail->GetDpmY()) : Rational{72, 1};
  return buildSegment({.primaryRows = newPrimaryRows,
                       .primary = primary,
                       .exifRows = newExifRows,
                       .exif = exif,
                       .hasInteroperability = true,
                       .gps = nullptr,
                       .thumbnailRows = encoded.isTaken() ? newThumbnailRows : OutputRows(),
                       .thumbnail = nullptr,
                       .context = context,
                       .ofThumbnail = ofThumbnail},
                      encoded);
}

uint32_t segmentSize(const uint8_t* segment) {
  return segment[lengthField] * 256u + segment[lengthField + 1] + lengthField;
}

}  // namespace exifkeep
