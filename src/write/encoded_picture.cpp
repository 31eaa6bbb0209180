// SPDX-License-Identifier: MIT
#include "write/encoded_picture.h"

#include <algorithm>
#include <utility>

namespace exifkeep {

namespace {

// Ends encoding as soon as it has enough bytes.
class Beginning final : public PictureSink {
 public:
  bool take(Bytes bytes) override {
    const Bytes wanted = bytes.first(std::min(bytes.size(), enough - bytes_.size()));
    bytes_.insert(bytes_.end(), wanted.begin(), wanted.end());
    return !isEnough();
  }
  bool isEnough() const { return bytes_.size() == enough; }
  std::vector<uint8_t> release() { return std::move(bytes_); }

 private:
  static constexpr size_t enough = 4096;

  std::vector<uint8_t> bytes_;
};

// Writes the codec's file from one position on to another position of a file.
class Mover {
 public:
  Mover(DiskFile& file, uint64_t from, uint64_t to) : file_(file), from_(from), to_(to) {}

  // `at` is the position of `bytes` in the codec's file.
  bool move(Bytes bytes, uint64_t at) {
    const uint64_t before = from_ > at ? std::min<uint64_t>(from_ - at, bytes.size()) : 0;
    const Bytes moved = bytes.subspan(static_cast<size_t>(before));
    return moved.empty() || file_.writeAt(to_ + (at + before - from_), moved.data(), moved.size());
  }

 private:
  DiskFile& file_;
  uint64_t from_;
  uint64_t to_;
};

class MovingSink final : public PictureSink {
 public:
  MovingSink(DiskFile& file, uint64_t begin, uint64_t end)
      : part_(file, begin, file.size()), beyond_(file, end, end) {}

  bool take(Bytes bytes) override {
    const uint64_t at = taken_;
    taken_ += bytes.size();
    return part_.move(bytes, at) && beyond_.move(bytes, at);
  }
  uint64_t taken() const { return taken_; }

 private:
  Mover part_;
  Mover beyond_;
  uint64_t taken_ = 0;
};

}  // namespace

EncodedPicture::EncodedPicture(const ImageCodecBridge& codec, PRaster& picture, const char* name) {
  if (!codec.saveImageFile(name, picture, *this)) parts_.clear();
}

bool EncodedPicture::take(Bytes bytes) {
  constexpr size_t partSize = 1 << 20;
  if (parts_.empty() || parts_.back().size() >= partSize) {
    parts_.emplace_back();
    // The piece that reaches the limit may exceed it.
    parts_.back().reserve(2 * partSize);
  }
  parts_.back().insert(parts_.back().end(), bytes.begin(), bytes.end());
  return true;
}

std::vector<uint8_t> encodedBeginning(const ImageCodecBridge& codec, PRaster& picture,
                                      const char* name) {
  Beginning beginning;
  const bool isWhole = codec.saveImageFile(name, picture, beginning);
  return isWhole || beginning.isEnough() ? beginning.release() : std::vector<uint8_t>();
}

bool StreamedPicture::appendTo(DiskFile& file) const {
  const uint64_t end = size_ == unknownSize ? unknownSize : file.size() + size_;
  MovingSink sink(file, begin_, end);
  return codec_.saveImageFile(name_, picture_, sink) &&
         (size_ == unknownSize || sink.taken() == begin_ + size_);
}

}  // namespace exifkeep
