// A JPEG file as the codec wrote it, in memory: its compaction (each kind of table in one segment,
// no APP0) and the splicing of an Exif segment behind SOI, both without copying the entropy-coded
// data. ITU-T T.81, annex B, gives the segments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "system/delivery.h"
#include "system/global_block.h"

namespace exifkeep {

using Bytes = std::span<const uint8_t>;

// Bytes that an APP0 segment at the start of `bytes` claims, its marker included; 0 when there is
// none.
size_t app0SizeAt(Bytes bytes);

class JpegStream {
 public:
  // Loads the whole file; empty when memory or the file fails, or for 4 GiB and more.
  explicit JpegStream(DiskFile& file);

  bool isLoaded() const { return !pieces_.empty(); }

  // Rearranges a stream of exactly the codec's layout: SOI, an optional APP0, two DQT, SOF0 with
  // three components, four DHT, SOS. False, and nothing changed, for any other stream.
  bool compact();

  // Puts a segment behind SOI, in place of an APP0 segment that may still be there. REQUIRES: the
  // stream is loaded; the segment outlives it.
  void insert(Bytes segment);

  // What the stream consists of now. They point into this object.
  std::span<const Piece> pieces() const { return pieces_; }

 private:
  bool hasCodecLayout(Bytes headers) const;

  GlobalBlock block_;
  BlockLock lock_;
  Bytes bytes_;
  std::vector<Piece> pieces_;  // SOI first
};

// Compacts the JPEG file at `path` in place; a file of another layout, or one that cannot be read,
// stays as it is. False when writing failed: the file, damaged then, is deleted.
bool compactJpegStream(const char* path);

}  // namespace exifkeep
