// A JPEG file written by the codec, in memory. Compacts it (one segment for each kind of table, no
// APP0) and inserts an Exif segment after SOI, both without copying the entropy-coded data. For the
// segments see ITU-T T.81, annex B.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "system/delivery.h"
#include "system/global_block.h"

namespace exifkeep {

using Bytes = std::span<const uint8_t>;

// The size that an APP0 segment at the start of `bytes` claims, including the marker; 0 if there is
// none.
size_t app0SizeAt(Bytes bytes);

class JpegStream {
 public:
  // Loads the whole file. Empty if that fails or the file is 4 GiB or larger.
  explicit JpegStream(DiskFile& file);

  bool isLoaded() const { return !pieces_.empty(); }

  // Rearranges a stream that has exactly the codec's layout: SOI, an optional APP0, two DQT, SOF0
  // with three components, four DHT, SOS. Leaves any other stream unchanged and returns false.
  bool compact();

  // Inserts a segment after SOI, replacing the APP0 segment if there still is one. REQUIRES: the
  // stream is loaded; the segment outlives it.
  void insert(Bytes segment);

  // The parts of the stream, which point into this object.
  std::span<const Piece> pieces() const { return pieces_; }

 private:
  bool hasCodecLayout(Bytes headers) const;

  GlobalBlock block_;
  BlockLock lock_;
  Bytes bytes_;
  std::vector<Piece> pieces_;  // SOI first
};

// Compacts the JPEG file at `path` in place. Leaves it unchanged if it has another layout or cannot
// be read. If writing fails, deletes the damaged file and returns false.
bool compactJpegStream(const char* path);

}  // namespace exifkeep
