// SPDX-License-Identifier: MIT
// Row lists define the contents of written directories, in order. A row takes type, count and value
// from the tag's row in the tag tables unless its kind says otherwise. A tag that the table does
// not have is a compile-time error.
#pragma once

#include <array>
#include <cstdint>

#include "read/tag_tables.h"

namespace exifkeep {

// Where a row's value comes from.
enum class RowValue : uint8_t {
  record,       // the record's field
  reference,    // the record's field, as UNDEFINED with a count of 2
  resolution,   // the record's if the row has a source that is present, else the picture's
  now,          // the time of saving
  textOrNow,    // the record's if present, else the time of saving
  fixedText,    // the row's text
  fixedNumber,  // the row's number
  fixedBytes,   // the four bytes of the row's text
  supplied,     // a number from the RowContext; a LONG if it does not fit into a SHORT
  noteOrZeros,  // the maker note, or two zero bytes if it begins with a zero byte
  pointer,      // a position that is filled in later, 0 until then
};

// The numbers in a RowContext.
enum class Supplied : uint8_t {
  pictureWidth,
  pictureHeight,
  stripBytes,
  rowsPerStrip,
  count,
};

struct OutputRow {
  uint16_t tag;
  TiffType type;
  RowValue value;
  uint16_t flag = noField;         // the row is written if this flag is set; noField: always
  const TagRow* source = nullptr;  // the record's field, if the value comes from it
  const char* text = nullptr;
  uint32_t number = 0;  // fixedNumber's value; supplied's index
};

// The kinds of rows, named after the value they write.
template <const auto& table>
struct RowsOf {
  static constexpr const TagRow& known(uint16_t tag) { return knownTag(table, tag); }

  // The field if present, with the type of its table.
  static consteval OutputRow copy(uint16_t tag) { return as(known(tag).type, tag); }
  template <class... Tag>
  static consteval auto copies(Tag... tags) {
    return std::array<OutputRow, sizeof...(tags)>{copy(tags)...};
  }
  // The field if present, with another type.
  static constexpr OutputRow as(TiffType type, uint16_t tag) {
    const TagRow& row = known(tag);
    return {tag, type, RowValue::record, row.flag, &row};
  }
  static consteval OutputRow reference(uint16_t tag) {
    const TagRow& row = known(tag);
    return {tag, TiffType::undefined, RowValue::reference, row.flag, &row};
  }
  static consteval OutputRow noteOrZeros(uint16_t tag) {
    return {tag, known(tag).type, RowValue::noteOrZeros, known(tag).flag, &known(tag)};
  }
  static consteval OutputRow resolution(uint16_t tag) {
    return {tag, TiffType::rational, RowValue::resolution, noField, &known(tag)};
  }
  static consteval OutputRow resolutionOfPicture(uint16_t tag) {
    return {tag, known(tag).type, RowValue::resolution};
  }
  static consteval OutputRow now(uint16_t tag) { return {tag, known(tag).type, RowValue::now}; }
  static consteval OutputRow nowIfPresent(uint16_t tag) {
    return {tag, known(tag).type, RowValue::now, known(tag).flag};
  }
  static consteval OutputRow textOrNow(uint16_t tag) {
    return {tag, known(tag).type, RowValue::textOrNow, noField, &known(tag)};
  }
  static consteval OutputRow fixedText(uint16_t tag, const char* text) {
    return {tag, known(tag).type, RowValue::fixedText, noField, nullptr, text};
  }
  static consteval OutputRow fixedBytes(uint16_t tag, const char* fourBytes) {
    return {tag, known(tag).type, RowValue::fixedBytes, noField, nullptr, fourBytes};
  }
  static consteval OutputRow fixedNumber(uint16_t tag, uint32_t number) {
    return {tag, known(tag).type, RowValue::fixedNumber, noField, nullptr, nullptr, number};
  }
  // This number if the field is present, whatever its value.
  static consteval OutputRow fixedNumberIfPresent(uint16_t tag, uint32_t number) {
    return {tag, known(tag).type, RowValue::fixedNumber, known(tag).flag, nullptr, nullptr, number};
  }
  static consteval OutputRow supplied(uint16_t tag, TiffType type, Supplied what) {
    known(tag);
    return {tag, type, RowValue::supplied, noField, nullptr, nullptr, static_cast<uint32_t>(what)};
  }
  static consteval OutputRow pointer(uint16_t tag) {
    known(tag);
    return {tag, TiffType::long_, RowValue::pointer};
  }
  static consteval OutputRow pointerIfPresent(uint16_t tag) {
    return pointerIf(known(tag).flag, tag);
  }
  static constexpr OutputRow pointerIf(size_t flag, uint16_t tag) {
    return {tag, TiffType::long_, RowValue::pointer, static_cast<uint16_t>(flag)};
  }
};

using Image = RowsOf<imageTags>;
using Exif = RowsOf<exifTags>;
using Gps = RowsOf<gpsTags>;
using Interoperability = RowsOf<interoperabilityTags>;

using OutputRows = std::span<const OutputRow>;

}  // namespace exifkeep
