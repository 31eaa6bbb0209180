// SPDX-License-Identifier: MIT
// Access to the fields of any record by the row of their tag.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "read/tag_tables.h"

namespace exifkeep {

// A flag is a 32-bit number at an offset in the record.
inline bool isFlagSet(const void* record, uint16_t flag) {
  uint32_t value;
  std::memcpy(&value, static_cast<const uint8_t*>(record) + flag, sizeof value);
  return value == 1;
}
inline void setFlag(void* record, uint16_t flag) {
  const uint32_t value = 1;
  std::memcpy(static_cast<uint8_t*>(record) + flag, &value, sizeof value);
}

inline uint8_t* fieldBytes(void* record, const TagRow& row) {
  return static_cast<uint8_t*>(record) + row.field;
}

// A field of a record. REQUIRES: the record is that of the row's table and outlives this object.
class RecordField {
 public:
  RecordField(const void* record, const TagRow& row)
      : record_(static_cast<const char*>(record)), row_(row) {}

  bool isPresent() const { return isFlagSet(record_, row_.flag); }
  const char* bytes() const { return record_ + row_.field; }
  template <class Value>
  Value as() const {
    Value value;
    std::memcpy(&value, bytes(), sizeof value);
    return value;
  }
  // The field as a number of its own size.
  uint32_t number() const {
    if (row_.capacity == sizeof(uint8_t)) return as<uint8_t>();
    return row_.capacity == sizeof(uint16_t) ? as<uint16_t>() : as<uint32_t>();
  }
  // Bounded: a field may be full to its last byte.
  std::string_view text() const {
    const char* begin = bytes();
    return {begin, strnlen(begin, row_.capacity)};
  }

 private:
  const char* record_;
  const TagRow& row_;
};

}  // namespace exifkeep
