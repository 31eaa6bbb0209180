// SPDX-License-Identifier: MIT
// A JPEG file as the codec encoded it. Compacts it (one segment for each kind of table, no APP0)
// and inserts an Exif segment after SOI, both without copying the entropy-coded data. For the
// segments see ITU-T T.81, annex B.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "system/delivery.h"
#include "write/encoded_picture.h"

namespace exifkeep {

// The size that an APP0 segment at the start of `bytes` claims, including the marker; 0 if there is
// none.
size_t app0SizeAt(Bytes bytes);

class JpegStream {
 public:
  // REQUIRES: the picture outlives this object.
  explicit JpegStream(const EncodedPicture& picture);

  // True if the picture could not be encoded.
  bool isEmpty() const { return pieces_.empty(); }

  // Rearranges a stream that has exactly the codec's layout: SOI, an optional APP0, two DQT, SOF0
  // with three components, four DHT, SOS. Leaves any other stream unchanged.
  void compact();

  // Inserts a segment after SOI, replacing the APP0 segment if there still is one. REQUIRES: the
  // stream is not empty; the segment outlives it.
  void insert(Bytes segment);

  // The parts of the stream, all in memory.
  std::span<const Piece> pieces() const { return pieces_; }

 private:
  bool hasCodecLayout(Bytes headers) const;
  void addLastBytes(size_t count);

  std::vector<Bytes> parts_;
  std::vector<Piece> pieces_;  // SOI first
};

// The picture's stream, compacted.
JpegStream compactJpegStream(const EncodedPicture& picture);

}  // namespace exifkeep
