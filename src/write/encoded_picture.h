// SPDX-License-Identifier: MIT
// Pictures encoded by the codec, which never writes to a destination itself.
#pragma once

#include <praster.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imageio/image_codec_bridge.h"
#include "system/delivery.h"

namespace exifkeep {

using Bytes = std::span<const uint8_t>;

// A picture file in memory.
class EncodedPicture final : PictureSink {
 public:
  // The name's extension selects the format. If the codec cannot write that format, the bridge
  // shows its message box.
  EncodedPicture(const ImageCodecBridge& codec, PRaster& picture, const char* name);

  // The file in parts; none if encoding failed. The first has at least 1 MiB, unless it is the
  // whole file.
  std::span<const std::vector<uint8_t>> parts() const { return parts_; }

 private:
  bool take(Bytes bytes) override;

  // Parts, because a single block would be copied whenever it grew.
  std::vector<std::vector<uint8_t>> parts_;
};

// The first 4 KiB of a picture file, or the whole file if it is shorter. Empty on failure.
std::vector<uint8_t> encodedBeginning(const ImageCodecBridge& codec, PRaster& picture,
                                      const char* name);

// A picture file, or the end of one, that is written while the codec encodes it, without being in
// memory completely. For uncompressed formats, because the picture may have to be encoded twice.
class StreamedPicture final : public PieceWriter {
 public:
  // The part of the file from `begin` on, which has `size` bytes; by default the whole file.
  StreamedPicture(const ImageCodecBridge& codec, PRaster& picture, const char* name,
                  uint64_t begin = 0, uint64_t size = unknownSize)
      : codec_(codec), picture_(picture), name_(name), begin_(begin), size_(size) {}

  // If the codec's file is longer than the new file, the rest of it follows too. Intended: saved
  // TIFF files with little metadata have always ended so.
  bool appendTo(DiskFile& file) const override;

 private:
  static constexpr uint64_t unknownSize = UINT64_MAX;

  const ImageCodecBridge& codec_;
  PRaster& picture_;
  const char* name_;
  uint64_t begin_;
  uint64_t size_;
};

}  // namespace exifkeep
