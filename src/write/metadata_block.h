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

// What the directories of a block are to hold: by which rows and from which record.
struct BlockContents {
  OutputRows primaryRows;
  const ImageIfdRecord& primary;
  OutputRows exifRows;
  const ExifIfdRecord& exif;
  bool hasInteroperability;
  const GpsIfdRecord* gps;          // null: no GPS directory
  OutputRows thumbnailRows;         // empty: no IFD1
  const ImageIfdRecord* thumbnail;  // null where the rows need none
  const RowContext& context;        // of all directories but IFD1
  const RowContext& ofThumbnail;    // of IFD1
};

class MetadataBlock {
 public:
  MetadataBlock() : block_(DirectoryWriter::blockSize), lock_(block_) {}

  // Writes the head and all directories; where they do not fit, without the maker note and then
  // without the user comment. IFD1's thumbnail has to follow. False when there is no memory or even
  // that does not fit.
  bool write(const BlockHead& head, const BlockContents& contents);

  uint8_t* bytes() const { return lock_.bytes(); }
  // Bytes in use.
  uint32_t length() const { return writer_.length(); }

  // Where `length` bytes of thumbnail are to be put; null when they do not fit.
  uint8_t* thumbnailRoom(uint32_t length) { return writer_.room(length); }
  // They are there: IFD1's entry of this tag holds their position.
  void endThumbnail(uint16_t positionTag, uint32_t length);

  // Fills in a number of IFD0, of IFD1.
  void setPrimary(uint16_t tag, uint32_t value) { writer_.setValue(primary_, tag, value); }
  void setThumbnail(uint16_t tag, uint32_t value) { writer_.setValue(thumbnail_, tag, value); }

  // Hands the block over; this object is done with.
  GlobalBlock release();

 private:
  void writeDirectories(const BlockContents& contents, const ExifIfdRecord& exif);
  void point(uint32_t directory, uint16_t tag, uint32_t target) {
    writer_.setValue(directory, tag, writer_.tiffOffset(target));
  }

  GlobalBlock block_;
  BlockLock lock_;
  DirectoryWriter writer_{nullptr, 0};
  uint32_t primary_ = 0;
  uint32_t thumbnail_ = 0;
};

}  // namespace exifkeep
