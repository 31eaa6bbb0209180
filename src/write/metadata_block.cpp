// SPDX-License-Identifier: MIT
#include "write/metadata_block.h"

#include <cstring>
#include <utility>

#include "write/jpeg_rows.h"

namespace exifkeep {

namespace {

// The records to try until the directories fit the block: unchanged, then without the maker note
// (or the user comment, if the note is small), then without both.
class ShrinkingRecord {
 public:
  explicit ShrinkingRecord(const ExifIfdRecord& exif) : exif_(exif) {}
  const ExifIfdRecord& record() const { return exif_; }
  // Leaves out one more of the two; false if neither is left.
  bool shrink() {
    const bool isNoteSmall = exif_.makerNoteLength <= smallNote;
    uint32_t& first = isNoteSmall ? exif_.hasUserComment : exif_.hasMakerNote;
    uint32_t& last = isNoteSmall ? exif_.hasMakerNote : exif_.hasUserComment;
    return std::exchange(first, 0u) || std::exchange(last, 0u);
  }

 private:
  // A small note is kept as long as there is a comment to leave out. A large one goes first, as it
  // would often leave no room for the thumbnail.
  static constexpr uint32_t smallNote = 4096;

  ExifIfdRecord exif_;
};

}  // namespace

bool MetadataBlock::write(const BlockHead& head, const BlockContents& contents) {
  if (!bytes()) return false;
  ShrinkingRecord exif(contents.exif);
  do {
    std::memset(bytes(), 0, length());
    writer_ = DirectoryWriter(bytes(), head.tiffHeader);
    writer_.append(head.bytes.data(), static_cast<uint32_t>(head.bytes.size()));
    writeDirectories(contents, exif.record());
    if (!writer_.hasFailed()) return true;
  } while (exif.shrink());
  return false;
}

void MetadataBlock::writeDirectories(const BlockContents& contents, const ExifIfdRecord& exif) {
  const RowContext& context = contents.context;
  primary_ = writer_.writeDirectory(contents.primaryRows, &contents.primary, context);
  const uint32_t exifDirectory = writer_.writeDirectory(contents.exifRows, &exif, context);
  point(primary_, tag::exifIfdPointer, exifDirectory);
  if (contents.hasInteroperability)
    point(exifDirectory, tag::interoperabilityIfdPointer,
          writer_.writeDirectory(interoperabilityRows, nullptr, context));
  if (contents.gps)
    point(primary_, tag::gpsIfdPointer, writer_.writeDirectory(gpsRows, contents.gps, context));
  if (contents.thumbnailRows.empty()) return;
  thumbnail_ =
      writer_.writeDirectory(contents.thumbnailRows, contents.thumbnail, contents.ofThumbnail);
  writer_.setNextDirectory(primary_, thumbnail_);
}

void MetadataBlock::endThumbnail(uint16_t positionTag, uint32_t length) {
  point(thumbnail_, positionTag, writer_.length());
  writer_.advance(length);
}

GlobalBlock MetadataBlock::release() {
  lock_.unlock();
  return std::move(block_);
}

}  // namespace exifkeep
