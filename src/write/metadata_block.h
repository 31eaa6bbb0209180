// The one machine behind every written file's metadata: the directories in their order, chained and
// pointed to, in a block of 65536 bytes. A JPEG segment and the front part of a TIFF file differ in
// the bytes before IFD0, in their row lists and in how the thumbnail follows.
#pragma once

#include <cstdint>
#include <span>

#include "read/records.h"
#include "system/global_block.h"
#include "write/directory_writer.h"
#include "write/row_context.h"

namespace exifkeep {

// What a block begins with, and where in it the TIFF header is. IFD0 follows.
struct BlockHead {
  std::span<const uint8_t> bytes;
  uint32_t tiffHeader;
};

// The directories of one block. Their entries with positions are filled in here.
class MetadataWriter {
 public:
  MetadataWriter(uint8_t* block, const BlockHead& head) : writer_(block, head.tiffHeader) {
    writer_.append(head.bytes.data(), static_cast<uint32_t>(head.bytes.size()));
  }

  void writePrimary(OutputRows rows, const ImageIfdRecord& primary, const RowContext& context);
  // The Exif directory and, with `hasInteroperability`, the interoperability directory behind it.
  void writeExif(OutputRows rows, const ExifIfdRecord& exif, const RowContext& context,
                 bool hasInteroperability);
  void writeGps(const GpsIfdRecord& gps, const RowContext& context);
  // IFD1; its thumbnail has to follow.
  void writeThumbnail(OutputRows rows, const ImageIfdRecord* record, const RowContext& context);

  bool directoriesFit() const { return !writer_.hasFailed(); }

  // Where `length` bytes of thumbnail are to be put; null when they do not fit.
  uint8_t* thumbnailRoom(uint32_t length) { return writer_.room(length); }
  // They are there: IFD1's entry of this tag holds their position.
  void endThumbnail(uint16_t positionTag, uint32_t length);

  // Fills in a number of IFD0, of IFD1.
  void setPrimary(uint16_t tag, uint32_t value) { writer_.setValue(primary_, tag, value); }
  void setThumbnail(uint16_t tag, uint32_t value) { writer_.setValue(thumbnail_, tag, value); }

  // Bytes of the block in use.
  uint32_t length() const { return writer_.length(); }

 private:
  void point(uint32_t directory, uint16_t tag, uint32_t target) {
    writer_.setValue(directory, tag, writer_.tiffOffset(target));
  }

  DirectoryWriter writer_;
  uint32_t primary_ = 0;
  uint32_t thumbnail_ = 0;
};

// Builds a block: `directories(writer, exif)` writes the directories, then `finish(writer, bytes)`
// the rest; false from the latter gives no block. Where the directories alone do not fit, they are
// tried without the maker note and then without the user comment.
template <class Directories, class Finish>
GlobalBlock buildMetadataBlock(const BlockHead& head, const ExifIfdRecord& exif,
                               Directories directories, Finish finish) {
  ShrinkingRecord shrinking(exif);
  do {
    GlobalBlock block(DirectoryWriter::blockSize);
    const BlockLock lock(block);
    if (!lock.bytes()) return {};
    MetadataWriter writer(lock.bytes(), head);
    directories(writer, shrinking.record());
    if (!writer.directoriesFit()) continue;
    if (!finish(writer, lock.bytes())) return {};
    return block;
  } while (shrinking.shrink());
  return {};
}

}  // namespace exifkeep
