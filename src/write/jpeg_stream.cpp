#include "write/jpeg_stream.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace exifkeep {

namespace {

constexpr uint64_t maxFileSize = UINT32_MAX;
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

JpegStream::JpegStream(DiskFile& file)
    : block_(file.isOpen() && file.size() <= maxFileSize
                 ? GlobalBlock(static_cast<size_t>(file.size()))
                 : GlobalBlock()),
      lock_(block_) {
  const auto size = static_cast<size_t>(file.size());
  if (!lock_.bytes() || size < markerSize || file.readAt(0, lock_.bytes(), size) != size) return;
  bytes_ = {lock_.bytes(), size};
  pieces_ = {Piece(bytes_.first(markerSize)), Piece(bytes_.subspan(markerSize))};
}

bool JpegStream::hasCodecLayout(Bytes headers) const {
  if (headers.size() < codecHeadersSize + markerSize) return false;
  for (const Segment& segment : codecHeaders)
    if (std::memcmp(headers.data() + segment.at, segment.head, segmentHead) != 0) return false;
  return bytes_[0] == 0xFF && bytes_[1] == 0xD8;
}

bool JpegStream::compact() {
  if (!isLoaded()) return false;
  Bytes rest = bytes_.subspan(markerSize);
  const size_t app0Size = app0SizeAt(rest);
  if (app0Size > rest.size()) return false;
  rest = rest.subspan(app0Size);
  if (!hasCodecLayout(rest)) return false;

  const auto take = [&rest](size_t size) {
    const Bytes taken = rest.first(size);
    rest = rest.subspan(size);
    return taken;
  };
  const auto add = [this](Bytes piece) { pieces_.emplace_back(piece); };
  pieces_.pop_back();
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
  // If the removed APP0 is long, the file keeps its size and thus its last bytes after the new EOI.
  // Intended: a decoder stops at EOI.
  if (app0Size > growth) add(bytes_.last(app0Size - growth));
  return true;
}

void JpegStream::insert(Bytes segment) {
  Piece& rest = pieces_[1];
  const uint64_t app0Size = app0SizeAt({rest.bytes, static_cast<size_t>(rest.size)}) & 0xFFFF;
  const uint64_t dropped = std::min(app0Size, rest.size);  // modulo 65536: intended
  rest.bytes += dropped;
  rest.size -= dropped;
  pieces_.insert(pieces_.begin() + 1, Piece(segment));
}

bool compactJpegStream(const char* path) {
  {
    DiskFile file = DiskFile::openForWriting(path);
    JpegStream stream(file);
    if (!stream.compact() || (writePieces(file, stream.pieces()) && file.close())) return true;
  }
  DeleteFileA(path);
  return false;
}

}  // namespace exifkeep
