// A JPEG file as the codec wrote it, in memory: its compaction (each kind of table in one segment,
// no APP0) and the splicing of an Exif segment behind SOI, both without copying the entropy-coded
// data. ITU-T T.81, annex B, gives the segments.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "system/disk_file.h"
#include "system/global_block.h"

namespace exifkeep {

class JpegStream {
 public:
  using Bytes = std::span<const uint8_t>;

  // Loads the whole file; empty when memory or the file fails, or for 4 GiB and more.
  explicit JpegStream(DiskFile& file);

  bool isLoaded() const { return !bytes_.empty(); }

  // Rearranges a stream of exactly the codec's layout: SOI, an optional APP0, two DQT, SOF0 with
  // three components, four DHT, SOS. False, and nothing changed, for any other stream.
  bool compact();

  // Writes the stream over the file from its start. The file is not truncated.
  bool writeTo(DiskFile& file) const;
  // The same with `segment` behind SOI and without an APP0 segment that may still follow it.
  bool writeWithSegment(DiskFile& file, Bytes segment) const;

 private:
  // The pieces behind SOI, in file order.
  std::span<const Bytes> pieces() const { return {pieces_.data(), pieceCount_}; }
  void add(Bytes piece) { pieces_[pieceCount_++] = piece; }
  bool hasCodecLayout(Bytes headers) const;

  static constexpr size_t maxPieces = 16;

  GlobalBlock block_;
  BlockLock lock_;
  Bytes bytes_;
  std::array<Bytes, maxPieces> pieces_;
  size_t pieceCount_ = 0;
};

// Compacts the JPEG file at `path` in place; a file of another layout, or one that cannot be read,
// stays as it is. False when writing failed: the file, damaged then, is deleted.
bool compactJpegStream(const char* path);

}  // namespace exifkeep
