// SPDX-License-Identifier: MIT
#include "write/jpeg_stream.h"

#include <algorithm>
#include <cstring>

namespace exifkeep {

namespace {

constexpr size_t markerSize = 2;
constexpr size_t segmentHead = 4;  // marker and length
constexpr size_t quantTable = 65;
constexpr size_t dcTable = 29;
constexpr size_t acTable = 179;
constexpr size_t frameHeader = 19;  // SOF0 with three components, including the marker
constexpr size_t scanHeader = 14;   // SOS likewise

// The codec's header segments: the position of each after APP0, and its first bytes.
struct Segment {
  size_t at;
  uint8_t head[segmentHead];
};
constexpr Segment codecHeaders[] = {
    {0, {0xFF, 0xDB, 0, 67}},    {69, {0xFF, 0xDB, 0, 67}},   {138, {0xFF, 0xC0, 0, 17}},
    {157, {0xFF, 0xC4, 0, 31}},  {190, {0xFF, 0xC4, 0, 181}}, {373, {0xFF, 0xC4, 0, 31}},
    {406, {0xFF, 0xC4, 0, 181}}, {589, {0xFF, 0xDA, 0, 12}},
};
constexpr size_t codecHeadersSize = 603;

constexpr uint8_t oneQuantSegment[] = {0xFF, 0xDB, 0, 2 + 3 * quantTable};
constexpr size_t huffmanLength = 2 + 2 * (dcTable + acTable);
constexpr uint8_t oneHuffmanSegment[] = {0xFF, 0xC4, huffmanLength >> 8, huffmanLength & 0xFF};

// How much compaction adds to a stream without APP0.
constexpr size_t growth = sizeof oneQuantSegment + 3 * quantTable + frameHeader +
                          sizeof oneHuffmanSegment + 2 * (dcTable + acTable) + scanHeader -
                          codecHeadersSize;

}  // namespace

size_t app0SizeAt(Bytes bytes) {
  if (bytes.size() < segmentHead || bytes[0] != 0xFF || bytes[1] != 0xE0) return 0;
  return bytes[2] * 256u + bytes[3] + markerSize;
}

JpegStream::JpegStream(const EncodedPicture& picture)
    : parts_(picture.parts().begin(), picture.parts().end()) {
  if (parts_.empty() || parts_[0].size() < markerSize) return;
  pieces_ = {Piece(parts_[0].first(markerSize)), Piece(parts_[0].subspan(markerSize))};
  for (size_t i = 1; i < parts_.size(); ++i) pieces_.emplace_back(parts_[i]);
}

bool JpegStream::hasCodecLayout(Bytes headers) const {
  if (headers.size() < codecHeadersSize + markerSize) return false;
  for (const Segment& segment : codecHeaders)
    if (std::memcmp(headers.data() + segment.at, segment.head, segmentHead) != 0) return false;
  return parts_[0][0] == 0xFF && parts_[0][1] == 0xD8;
}

void JpegStream::addLastBytes(size_t count) {
  size_t others = 0;
  for (const Bytes part : parts_) others += part.size();
  others -= count;
  for (const Bytes part : parts_) {
    const size_t skipped = std::min(others, part.size());
    others -= skipped;
    pieces_.emplace_back(part.subspan(skipped));
  }
}

// The first part has room for the headers and the longest APP0.
void JpegStream::compact() {
  if (isEmpty()) return;
  Bytes rest = parts_[0].subspan(markerSize);
  const size_t app0Size = app0SizeAt(rest);
  if (app0Size > rest.size()) return;
  rest = rest.subspan(app0Size);
  if (!hasCodecLayout(rest)) return;

  const auto take = [&rest](size_t size) {
    const Bytes taken = rest.first(size);
    rest = rest.subspan(size);
    return taken;
  };
  const auto add = [this](Bytes piece) { pieces_.emplace_back(piece); };
  pieces_.resize(1, pieces_[0]);
  add(oneQuantSegment);
  take(segmentHead);
  add(take(quantTable));
  take(segmentHead);
  const Bytes secondTable = take(quantTable);
  add(secondTable);
  add(secondTable);  // a third table, which readers ignore: intended
  add(take(frameHeader));
  add(oneHuffmanSegment);
  for (size_t table : {dcTable, acTable, dcTable, acTable}) {
    take(segmentHead);
    add(take(table));
  }
  add(take(scanHeader));
  add(rest);
  for (size_t i = 1; i < parts_.size(); ++i) add(parts_[i]);
  // If the removed APP0 is long, the file keeps its size and thus its last bytes after the new EOI.
  // Intended: a decoder stops at EOI.
  if (app0Size > growth) addLastBytes(app0Size - growth);
}

void JpegStream::insert(Bytes segment) {
  Bytes& rest = pieces_[1].bytes;
  const size_t app0Size = app0SizeAt(rest) & 0xFFFF;  // modulo 65536: intended
  rest = rest.subspan(std::min(app0Size, rest.size()));
  pieces_.insert(pieces_.begin() + 1, Piece(segment));
}

JpegStream compactJpegStream(const EncodedPicture& picture) {
  JpegStream stream(picture);
  stream.compact();
  return stream;
}

}  // namespace exifkeep
