// SPDX-License-Identifier: MIT
// Builds the metadata of every written file in a block of 65536 bytes: all directories in order,
// with their links and pointers. A JPEG segment and the front part of a TIFF file differ only in
// the bytes before IFD0, in their row lists and in how the thumbnail is appended.
#pragma once

#include <cstdint>
#include <span>

#include "read/records.h"
#include "system/global_block.h"
#include "write/directory_writer.h"
#include "write/row_context.h"

namespace exifkeep {

// The first bytes of a block, followed by IFD0, and the position of the TIFF header in them.
struct BlockHead {
  std::span<const uint8_t> bytes;
  uint32_t tiffHeader;
};

// The contents of a block's directories: the rows of each and the record that they refer to.
struct BlockContents {
  OutputRows primaryRows;
  const ImageIfdRecord& primary;
  OutputRows exifRows;
  const ExifIfdRecord& exif;
  bool hasInteroperability;
  const GpsIfdRecord* gps;          // null: no GPS directory
  OutputRows thumbnailRows;         // empty: no IFD1
  const ImageIfdRecord* thumbnail;  // null if the rows need none
  const RowContext& context;        // for all directories except IFD1
  const RowContext& ofThumbnail;    // for IFD1
};

class MetadataBlock {
 public:
  MetadataBlock() : block_(DirectoryWriter::blockSize), lock_(block_) {}

  // Writes the head and all directories, leaving out the maker note and the user comment as far as
  // necessary. The thumbnail of IFD1 must be added next. False if memory runs out or even that does
  // not fit.
  bool write(const BlockHead& head, const BlockContents& contents);

  uint8_t* bytes() const { return lock_.bytes(); }
  // Bytes in use.
  uint32_t length() const { return writer_.length(); }

  // Where the caller is to store a thumbnail of `length` bytes; null if it does not fit.
  uint8_t* thumbnailRoom(uint32_t length) { return writer_.room(length); }
  // Ends the thumbnail: the entry `positionTag` of IFD1 gets its position.
  void endThumbnail(uint16_t positionTag, uint32_t length);

  // Fill in a number in IFD0 or IFD1.
  void setPrimary(uint16_t tag, uint32_t value) { writer_.setValue(primary_, tag, value); }
  void setThumbnail(uint16_t tag, uint32_t value) { writer_.setValue(thumbnail_, tag, value); }

  // Releases the block; this object must not be used any more.
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
