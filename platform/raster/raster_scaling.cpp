// SPDX-License-Identifier: MIT
// Scales with integer sums. On each axis a target pixel has a span of source pixels with integer
// weights, whose total is the same for all spans, so that a uniform source remains exactly uniform.
// Source rows that are entirely within one target row are first added up in 16-bit columns (the
// only loop over all source pixels, which the compiler can vectorise) and then reduced like a
// single row.
#include "raster_scaling.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace exifkeep {
namespace {

// The source pixels first..last of one target pixel. Those between the two have the axis's inner
// weight. If both are the same pixel, only firstWeight is used.
struct Span {
  unsigned first;
  unsigned last;
  unsigned firstWeight;
  unsigned lastWeight;
};

class Axis {
 public:
  Axis(unsigned source, unsigned target) : source_(source), target_(target) {}

  // When shrinking, a source pixel is target_ units long and a target pixel source_ units.
  unsigned innerWeight() const { return target_; }
  unsigned totalWeight() const { return shrinks() ? source_ : blendSteps; }
  Span span(unsigned index) const { return shrinks() ? covered(index) : blended(index); }

 private:
  static constexpr unsigned blendSteps = 4096;

  bool shrinks() const { return target_ <= source_; }

  Span covered(unsigned index) const {
    const uint64_t begin = index * source_;
    const uint64_t end = begin + source_;
    const uint64_t first = begin / target_;
    const uint64_t last = (end - 1) / target_;
    const uint64_t firstWeight = std::min(end, (first + 1) * target_) - begin;
    return {static_cast<unsigned>(first), static_cast<unsigned>(last),
            static_cast<unsigned>(firstWeight), static_cast<unsigned>(end - last * target_)};
  }

  // The target pixel's centre is between the centres of two source pixels, or outside the
  // outermost.
  Span blended(unsigned index) const {
    const uint64_t doubled = (2 * uint64_t{index} + 1) * source_;
    const uint64_t position = doubled > target_ ? doubled - target_ : 0;
    const unsigned first = static_cast<unsigned>(position / (2 * target_));
    const unsigned part =
        static_cast<unsigned>(position % (2 * target_) * blendSteps / (2 * target_));
    if (part == 0 || first + 1 >= source_) return {first, first, blendSteps, 0};
    return {first, first + 1, blendSteps - part, part};
  }

  uint64_t source_;
  uint64_t target_;
};

using Sums = std::vector<uint64_t>;

// Computes the weighted sum for each target column and channel of a row.
template <int channels, typename Level>
void reduceRow(const Level* row, const std::vector<Span>& spans, unsigned innerWeight, Sums& sums) {
  uint64_t* sum = sums.data();
  for (const Span& span : spans) {
    uint64_t inner[channels] = {};
    const Level* level = row + size_t{span.first} * channels;
    for (int c = 0; c < channels; ++c) sum[c] = uint64_t{span.firstWeight} * level[c];
    if (span.last > span.first) {
      const Level* const last = row + size_t{span.last} * channels;
      for (level += channels; level != last; level += channels)
        for (int c = 0; c < channels; ++c) inner[c] += level[c];
      for (int c = 0; c < channels; ++c)
        sum[c] += innerWeight * inner[c] + uint64_t{span.lastWeight} * last[c];
    }
    sum += channels;
  }
}

void addRow(uint16_t* __restrict sums, const BYTE* a, size_t length) {
  for (size_t i = 0; i < length; ++i) sums[i] = static_cast<uint16_t>(sums[i] + a[i]);
}

void addFourRows(uint16_t* __restrict sums, const BYTE* a, const BYTE* b, const BYTE* c,
                 const BYTE* d, size_t length) {
  for (size_t i = 0; i < length; ++i)
    sums[i] = static_cast<uint16_t>(sums[i] + a[i] + b[i] + c[i] + d[i]);
}

template <int channels>
class BlendedScaling {
 public:
  BlendedScaling(const PRaster::Image& source, PRaster::Image& target)
      : source_(source),
        target_(target),
        across_(source.width(), target.width()),
        down_(source.height(), target.height()),
        cells_(size_t{target.width()} * channels) {
    spans_.reserve(target.width());
    for (unsigned x = 0; x < target.width(); ++x) spans_.push_back(across_.span(x));
    if (source.height() > 2 * target.height()) columns_.resize(size_t{source.width()} * channels);
    for (ReducedRow& row : reduced_) row.sums.resize(cells_.size());
    innerSums_.assign(cells_.size(), 0);
  }

  void run() {
    for (unsigned y = 0; y < target_.height(); ++y) {
      const Span span = down_.span(y);
      std::fill(cells_.begin(), cells_.end(), 0);
      addToCells(reduced(span.first), span.firstWeight);
      if (span.last > span.first) {
        addInnerRows(span.first + 1, span.last);
        addToCells(reduced(span.last), span.lastWeight);
      }
      finishRow(target_.row(y));
    }
  }

 private:
  struct ReducedRow {
    unsigned y = ~0u;
    Sums sums;
  };

  // Adjacent target rows share a source row, so the last two reduced rows are kept.
  const Sums& reduced(unsigned y) {
    ReducedRow& row = reduced_[y % 2];
    if (row.y != y) {
      reduceRow<channels>(source_.row(y), spans_, across_.innerWeight(), row.sums);
      row.y = y;
    }
    return row.sums;
  }

  void addToCells(const Sums& sums, unsigned weight) {
    for (size_t i = 0; i < cells_.size(); ++i) cells_[i] += sums[i] * weight;
  }

  void addInnerRows(unsigned y, unsigned end) {
    if (columns_.empty()) {
      for (; y < end; ++y) addToCells(reduced(y), down_.innerWeight());
      return;
    }
    while (y < end) {
      const unsigned groupEnd = std::min(end, y + rowsPerGroup);
      sumColumns(y, groupEnd);
      reduceRow<channels>(columns_.data(), spans_, across_.innerWeight(), innerSums_);
      addToCells(innerSums_, down_.innerWeight());
      y = groupEnd;
    }
  }

  void sumColumns(unsigned y, unsigned end) {
    std::fill(columns_.begin(), columns_.end(), uint16_t{0});
    for (; y + 4 <= end; y += 4)
      addFourRows(columns_.data(), source_.row(y), source_.row(y + 1), source_.row(y + 2),
                  source_.row(y + 3), columns_.size());
    for (; y < end; ++y) addRow(columns_.data(), source_.row(y), columns_.size());
  }

  // The sums are below 2^53 (at most 2^28 pixels, or 4096 steps per axis), so a double is exact.
  void finishRow(BYTE* row) const {
    const double scale = 1.0 / (static_cast<double>(across_.totalWeight()) *
                                static_cast<double>(down_.totalWeight()));
    for (size_t i = 0; i < cells_.size(); ++i)
      row[i] = static_cast<BYTE>(
          static_cast<int>(static_cast<double>(static_cast<int64_t>(cells_[i])) * scale + 0.5));
  }

  static constexpr unsigned rowsPerGroup = 256;  // 256 * 255 fits into 16 bits

  const PRaster::Image& source_;
  PRaster::Image& target_;
  Axis across_;
  Axis down_;
  std::vector<Span> spans_;
  std::vector<uint16_t> columns_;
  ReducedRow reduced_[2];
  Sums innerSums_;
  Sums cells_;
};

// The index of the source pixel at the centre of a target pixel.
unsigned nearestIndex(unsigned index, unsigned source, unsigned target) {
  return static_cast<unsigned>((2 * uint64_t{index} + 1) * source / (2 * uint64_t{target}));
}

void pickLevels(const BYTE* from, unsigned sourceWidth, BYTE* to, unsigned targetWidth) {
  for (unsigned x = 0; x < targetWidth; ++x)
    to[x] = from[nearestIndex(x, sourceWidth, targetWidth)];
}

void pickBits(const BYTE* from, unsigned sourceWidth, BYTE* to, unsigned targetWidth) {
  std::memset(to, 0, (targetWidth + 7) / 8);
  for (unsigned x = 0; x < targetWidth; ++x) {
    const unsigned at = nearestIndex(x, sourceWidth, targetWidth);
    to[x / 8] = static_cast<BYTE>(to[x / 8] | bitAt(from, at) << (7 - x % 8));
  }
}

}  // namespace

bool scaleBlended(const PRaster::Image& source, PRaster::Image& target) {
  try {
    if (source.depth() == 24)
      BlendedScaling<3>(source, target).run();
    else
      BlendedScaling<1>(source, target).run();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void scaleNearest(const PRaster::Image& source, PRaster::Image& target) {
  const auto pick = source.depth() == 1 ? pickBits : pickLevels;
  for (unsigned y = 0; y < target.height(); ++y)
    pick(source.row(nearestIndex(y, source.height(), target.height())), source.width(),
         target.row(y), target.width());
}

}  // namespace exifkeep
