// SPDX-License-Identifier: MIT
#include "write/directory_writer.h"

#include <algorithm>
#include <cstring>

#include "probe/directory_entries.h"
#include "read/record_field.h"

namespace exifkeep {

namespace {

constexpr uint32_t entrySize = IfdEntry::size;
constexpr uint32_t valueField = IfdEntry::valuePosition;

void storeShort(uint8_t* to, uint32_t value) {
  to[0] = static_cast<uint8_t>(value);
  to[1] = static_cast<uint8_t>(value >> 8);
}

uint32_t loadShort(const uint8_t* from) {
  return from[0] | uint32_t{from[1]} << 8;
}

void storeLong(uint8_t* to, uint32_t value) {
  storeShort(to, value);
  storeShort(to + 2, value >> 16);
}

bool isWritten(const OutputRow& row, const void* record) {
  return row.flag == noField || isFlagSet(record, row.flag);
}

template <class Number>
Number numberAt(const uint8_t* bytes) {
  Number number;
  std::memcpy(&number, bytes, sizeof number);
  return number;
}

}  // namespace

void writeIfdEntry(uint8_t* destination, uint16_t tag, TiffType type, uint32_t count,
                   uint32_t value) {
  storeShort(destination, tag);
  storeShort(destination + 2, static_cast<uint16_t>(type));
  storeLong(destination + 4, count);
  storeLong(destination + valueField, value);
}

void copyBytes(uint8_t* destination, const void* source, int32_t length) {
  if (length > 0) std::memcpy(destination, source, static_cast<size_t>(length));
}

uint8_t* DirectoryWriter::room(uint32_t length) {
  if (hasFailed_ || length > blockSize || length_ > blockSize - length) {
    hasFailed_ = true;
    return nullptr;
  }
  return block_ + length_;
}

void DirectoryWriter::advance(uint32_t length) {
  if (room(length)) length_ += length;
}

void DirectoryWriter::append(const void* bytes, uint32_t length) {
  if (uint8_t* to = room(length)) copyBytes(to, bytes, static_cast<int32_t>(length));
  advance(length);
}

uint32_t DirectoryWriter::writeDirectory(OutputRows rows, const void* record,
                                         const RowContext& context) {
  const auto entries = static_cast<uint32_t>(
      std::ranges::count_if(rows, [&](const OutputRow& row) { return isWritten(row, record); }));
  const uint32_t directory = length_;
  // Count, entries, and the link to the next directory, which is 0 until it is set.
  advance(2 + entrySize * entries + 4);
  if (hasFailed_) return directory;
  storeShort(block_ + directory, entries);
  entry_ = directory + 2;
  for (const OutputRow& row : rows)
    if (isWritten(row, record)) writeRow(row, record, context);
  return directory;
}

void DirectoryWriter::setValue(uint32_t directory, uint16_t tag, uint32_t value) {
  if (hasFailed_) return;
  uint8_t* entry = block_ + directory + 2;
  for (uint32_t left = loadShort(block_ + directory); left > 0; --left, entry += entrySize)
    if (loadShort(entry) == tag) storeLong(entry + valueField, value);
}

void DirectoryWriter::setNextDirectory(uint32_t directory, uint32_t next) {
  if (!hasFailed_)
    storeLong(block_ + directory + 2 + entrySize * loadShort(block_ + directory), tiffOffset(next));
}

void DirectoryWriter::writeRow(const OutputRow& row, const void* record,
                               const RowContext& context) {
  switch (row.value) {
    case RowValue::record: return writeRecordValue(row, record);
    case RowValue::reference:
      // The altitude reference is one byte, all others two characters.
      return putBytesInEntry(row, 2, RecordField(record, *row.source).bytes(), row.source->limit);
    case RowValue::resolution: return writeResolution(row, record, context);
    case RowValue::now: return putText(row, context.now);
    case RowValue::textOrNow: {
      const RecordField field(record, *row.source);
      return putText(row, field.isPresent() ? field.text() : context.now);
    }
    case RowValue::fixedText: return putText(row, row.text);
    case RowValue::fixedBytes: return putBytesInEntry(row, 4, row.text, 4);
    case RowValue::fixedNumber: return putInEntry(row, 1, row.number);
    case RowValue::supplied: return putSupplied(row, context.supplied[row.number]);
    case RowValue::noteOrZeros: return writeNoteOrZeros(row, record);
    case RowValue::pointer: return putInEntry(row, 1, 0);
  }
}

void DirectoryWriter::writeResolution(const OutputRow& row, const void* record,
                                      const RowContext& context) {
  const void* value = row.tag == tag::xResolution ? &context.xResolution : &context.yResolution;
  if (row.source && RecordField(record, *row.source).isPresent())
    value = RecordField(record, *row.source).bytes();
  putRationals(row, value, 1);
}

// The form depends on how the value is read, so that the readers find it again.
void DirectoryWriter::writeRecordValue(const OutputRow& row, const void* record) {
  const TagRow& source = *row.source;
  const RecordField field(record, source);
  const auto& exif = *static_cast<const ExifIfdRecord*>(record);
  switch (source.fetch) {
    case Fetch::shortValue:
    case Fetch::longValue:
    case Fetch::shortOrLong: return putInEntry(row, 1, field.number());
    case Fetch::rawByte:
    case Fetch::rawText: return putBytesInEntry(row, source.limit, field.bytes(), source.limit);
    case Fetch::rationals: return putRationals(row, field.bytes(), source.limit);
    case Fetch::shorts: return putShorts(row, field.bytes(), source.limit);
    case Fetch::bytes:
    case Fetch::text:
    case Fetch::shortText: return putText(row, field.text());
    case Fetch::subjectArea: return writeSubjectArea(row, exif);
    case Fetch::makerNote: return writeMakerNote(row, exif);
    case Fetch::userComment: return writeUserComment(row, exif);
    case Fetch::interoperability:
    case Fetch::isR98:
    case Fetch::skipped: return;  // no rows copy these
  }
}

void DirectoryWriter::writeMakerNote(const OutputRow& row, const ExifIfdRecord& exif) {
  if (uint8_t* to = putInArea(row, exif.makerNoteLength, exif.makerNoteLength))
    copyBytes(to, exif.makerNote, static_cast<int32_t>(exif.makerNoteLength));
}

void DirectoryWriter::writeNoteOrZeros(const OutputRow& row, const void* record) {
  const auto& exif = *static_cast<const ExifIfdRecord*>(record);
  if (exif.makerNoteLength > 0 && exif.makerNote[0] == 0) return putInEntry(row, 2, 0);
  writeRecordValue(row, record);
}

void DirectoryWriter::writeUserComment(const OutputRow& row, const ExifIfdRecord& exif) {
  constexpr uint32_t codeLength = sizeof exif.userCommentCode;
  const uint64_t size = uint64_t{codeLength} + exif.userCommentLength;
  if (uint8_t* to = putInArea(row, static_cast<uint32_t>(size), size)) {
    copyBytes(to, exif.userCommentCode, codeLength);
    copyBytes(to + codeLength, exif.userComment, static_cast<int32_t>(exif.userCommentLength));
  }
}

// The values after the point are not 0 for a circle or a rectangle. A fourth value without a third
// is a rectangle too.
void DirectoryWriter::writeSubjectArea(const OutputRow& row, const ExifIfdRecord& exif) {
  const uint16_t* area = exif.subjectArea;
  putShorts(row, area, area[3] != 0 ? 4 : area[2] != 0 ? 3 : 2);
}

void DirectoryWriter::putInEntry(const OutputRow& row, uint32_t count, uint32_t value) {
  if (row.type == TiffType::short_) value &= 0xFFFF;
  writeIfdEntry(block_ + entry_, row.tag, row.type, count, value);
  entry_ += entrySize;
}

void DirectoryWriter::putSupplied(OutputRow row, uint32_t number) {
  if (number > UINT16_MAX) row.type = TiffType::long_;
  putInEntry(row, 1, number);
}

void DirectoryWriter::putBytesInEntry(const OutputRow& row, uint32_t count, const void* bytes,
                                      size_t length) {
  uint8_t* entry = block_ + entry_;
  putInEntry(row, count, 0);
  copyBytes(entry + valueField, bytes, static_cast<int32_t>(length));
}

uint8_t* DirectoryWriter::putInArea(const OutputRow& row, uint32_t count, uint64_t size) {
  const uint64_t padded = size + size % 2;
  uint8_t* to = room(static_cast<uint32_t>(std::min<uint64_t>(padded, blockSize + 1)));
  if (!to) return nullptr;
  putInEntry(row, count, tiffOffset(length_));
  length_ += static_cast<uint32_t>(padded);
  return to;
}

void DirectoryWriter::putText(const OutputRow& row, std::string_view text) {
  const auto count = static_cast<uint32_t>(text.size() + 1);
  if (uint8_t* to = putInArea(row, count, count))
    copyBytes(to, text.data(), static_cast<int32_t>(text.size()));
}

void DirectoryWriter::putRationals(const OutputRow& row, const void* pairs, uint32_t count) {
  const auto* bytes = static_cast<const uint8_t*>(pairs);
  uint8_t* to = putInArea(row, count, uint64_t{count} * sizeof(Rational));
  for (uint32_t i = 0; to && i < count * sizeof(Rational); i += sizeof(uint32_t))
    storeLong(to + i, numberAt<uint32_t>(bytes + i));
}

void DirectoryWriter::putShorts(const OutputRow& row, const void* shorts, uint32_t count) {
  const auto* bytes = static_cast<const uint8_t*>(shorts);
  uint8_t* to = putInArea(row, count, uint64_t{count} * sizeof(uint16_t));
  for (uint32_t i = 0; to && i < count * sizeof(uint16_t); i += sizeof(uint16_t))
    storeShort(to + i, numberAt<uint16_t>(bytes + i));
}

}  // namespace exifkeep
