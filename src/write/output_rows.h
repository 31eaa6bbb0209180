// Row lists: what a written directory holds, in its order, as data. A row takes type, count and
// value from the tag's own row in the directory tables unless its kind says otherwise; a tag that
// its table does not have does not compile.
#pragma once

#include <array>
#include <cstdint>

#include "read/tag_tables.h"

namespace exifkeep {

// Where a row's value comes from.
enum class RowValue : uint8_t {
  record,       // the record's field
  reference,    // likewise, as UNDEFINED of count 2
  resolution,   // the record's when the row has a source and it is present, else the picture's
  now,          // the time of saving
  textOrNow,    // the record's when present, else the time of saving
  fixedText,    // the row's text
  fixedNumber,  // the row's number
  fixedBytes,   // the four bytes of the row's text
  supplied,     // a number that the directory's writer supplies; as LONG when SHORT cannot hold it
  noteOrZeros,  // the maker note, or two zero bytes for one that begins with a zero byte
  pointer,      // a position that is filled in later; 0 until then
};

// The numbers that writers supply.
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
  uint16_t flag = noField;         // written when this flag is set; noField: always
  const TagRow* source = nullptr;  // the record's field, for values that come from it
  const char* text = nullptr;
  uint32_t number = 0;  // fixedNumber's value; supplied's index
};

// The kinds of rows. All are named after what they write.
template <const auto& table>
struct RowsOf {
  static constexpr const TagRow& known(uint16_t tag) { return knownTag(table, tag); }

  // When present, as its table says.
  static consteval OutputRow copy(uint16_t tag) { return as(known(tag).type, tag); }
  template <class... Tag>
  static consteval auto copies(Tag... tags) {
    return std::array<OutputRow, sizeof...(tags)>{copy(tags)...};
  }
  // When present, as another type than its table's.
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
  // When present, but with this number whatever the record holds.
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
