// SPDX-License-Identifier: MIT
// Handles both classic TIFF (TIFF 6.0, section 2) and BigTIFF, in both byte orders.
#include "tiff_source.h"

#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace exifkeep {
namespace {

constexpr uint16_t neededTags[] = {
    TIFFTAG_IMAGEWIDTH,       TIFFTAG_IMAGELENGTH,        TIFFTAG_BITSPERSAMPLE,
    TIFFTAG_COMPRESSION,      TIFFTAG_PHOTOMETRIC,        TIFFTAG_FILLORDER,
    TIFFTAG_STRIPOFFSETS,     TIFFTAG_SAMPLESPERPIXEL,    TIFFTAG_ROWSPERSTRIP,
    TIFFTAG_STRIPBYTECOUNTS,  TIFFTAG_XRESOLUTION,        TIFFTAG_YRESOLUTION,
    TIFFTAG_PLANARCONFIG,     TIFFTAG_GROUP3OPTIONS,      TIFFTAG_GROUP4OPTIONS,
    TIFFTAG_RESOLUTIONUNIT,   TIFFTAG_PREDICTOR,          TIFFTAG_WHITEPOINT,
    TIFFTAG_COLORMAP,         TIFFTAG_TILEWIDTH,          TIFFTAG_TILELENGTH,
    TIFFTAG_TILEOFFSETS,      TIFFTAG_TILEBYTECOUNTS,     TIFFTAG_INKSET,
    TIFFTAG_NUMBEROFINKS,     TIFFTAG_EXTRASAMPLES,       TIFFTAG_SAMPLEFORMAT,
    TIFFTAG_JPEGTABLES,       TIFFTAG_YCBCRCOEFFICIENTS,  TIFFTAG_YCBCRSUBSAMPLING,
    TIFFTAG_YCBCRPOSITIONING, TIFFTAG_REFERENCEBLACKWHITE};

constexpr uint64_t maxTableSize = 8 << 20;  // offsets or sizes of strips or tiles
constexpr uint64_t maxValueSize = 1 << 20;  // anything else

// The size of a value of each type; 0 for unknown types.
constexpr uint8_t typeSizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8};

struct Form {
  bool isBigEndian;
  bool isBig;

  unsigned headerSize() const { return isBig ? 16 : 8; }
  unsigned offsetSize() const { return isBig ? 8 : 4; }
  unsigned countSize() const { return isBig ? 8 : 2; }
  unsigned entrySize() const { return isBig ? 20 : 12; }

  uint64_t number(const uint8_t* bytes, unsigned width) const {
    uint64_t value = 0;
    for (unsigned i = 0; i < width; ++i)
      value = value << 8 | bytes[isBigEndian ? i : width - 1 - i];
    return value;
  }
  void store(uint64_t value, unsigned width, uint8_t* bytes) const {
    for (unsigned i = 0; i < width; ++i)
      bytes[isBigEndian ? width - 1 - i : i] = static_cast<uint8_t>(value >> 8 * i);
  }
};

bool isTable(uint16_t tag) {
  return tag == TIFFTAG_STRIPOFFSETS || tag == TIFFTAG_STRIPBYTECOUNTS ||
         tag == TIFFTAG_TILEOFFSETS || tag == TIFFTAG_TILEBYTECOUNTS;
}

// The needed tags that have not occurred yet.
class Wanted {
 public:
  bool take(const Form& form, const uint8_t* entry) {
    const auto tag = static_cast<uint16_t>(form.number(entry, 2));
    const auto known = std::ranges::find(neededTags, tag);
    if (known == std::end(neededTags)) return false;
    bool& taken = taken_[known - neededTags];
    if (taken) return false;
    taken = true;
    const uint64_t type = form.number(entry + 2, 2);
    const uint64_t count = form.number(entry + 4, form.offsetSize());
    const uint64_t size = type < std::size(typeSizes) ? typeSizes[type] : 0;
    return size != 0 && count <= (isTable(tag) ? maxTableSize : maxValueSize) / size;
  }

 private:
  bool taken_[std::size(neededTags)] = {};
};

}  // namespace

TiffSource::TiffSource(PictureReading& file) : file_(file) {
  readDirectory();
  file_.moveTo(0);
}

// Leaves directory_ empty if the file does not have the whole directory.
void TiffSource::readDirectory() {
  uint8_t header[16] = {};
  file_.moveTo(0);
  file_.read(header, sizeof header);
  Form form = {header[0] == 'M', false};
  form.isBig = form.number(header + 2, 2) == TIFF_VERSION_BIG;
  directoryAt_ = form.number(header + form.headerSize() - form.offsetSize(), form.offsetSize());
  if (directoryAt_ < form.headerSize()) return;  // must not overlap the header

  uint8_t countBytes[8];
  file_.moveTo(directoryAt_);
  if (file_.read(countBytes, form.countSize()) != form.countSize()) return;
  const uint64_t count = form.number(countBytes, form.countSize());
  constexpr uint64_t maxEntries = 65535;
  if (count == 0 || count > maxEntries) return;
  std::vector<uint8_t> entries(count * form.entrySize());
  if (file_.read(entries.data(), entries.size()) != entries.size()) return;

  directory_.resize(form.countSize());
  uint64_t kept = 0;
  Wanted wanted;
  for (auto entry = entries.begin(); entry != entries.end(); entry += form.entrySize())
    if (wanted.take(form, &*entry)) {
      directory_.insert(directory_.end(), entry, entry + form.entrySize());
      ++kept;
    }
  form.store(kept, form.countSize(), directory_.data());
  directory_.resize(directory_.size() + form.offsetSize());  // no next directory
}

size_t TiffSource::read(void* bytes, size_t count) {
  const uint64_t from = file_.position();
  const size_t held = file_.read(bytes, count);
  const uint64_t begin = std::max(from, directoryAt_);
  const uint64_t end = std::min(from + held, directoryAt_ + directory_.size());
  if (begin < end)
    std::memcpy(static_cast<uint8_t*>(bytes) + (begin - from),
                directory_.data() + (begin - directoryAt_), end - begin);
  return held;
}

}  // namespace exifkeep
