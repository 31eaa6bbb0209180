// SPDX-License-Identifier: MIT
#include "read/directory_walk.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "read/record_field.h"

namespace exifkeep {

namespace {

uint64_t sizeOfValue(const IfdEntry& entry) {
  return uint64_t{entry.count} * unitSize(entry.type);
}

// The methods for values that our writers put in the value area.
bool isReadAtOffset(const TagRow& row) {
  switch (row.fetch) {
    case Fetch::rationals:
    case Fetch::shorts:
    case Fetch::bytes:
    case Fetch::text:
    case Fetch::shortText:
    case Fetch::subjectArea:
    case Fetch::makerNote:
    case Fetch::userComment: return true;
    default: return false;
  }
}

// Whether the value field looks like a short text: printable ASCII up to a zero byte or to the last
// byte, or only zeros for an empty text. Offsets rarely look like that. REQUIRES: the value fits
// into the entry.
bool looksLikeText(const IfdEntry& entry) {
  if (unitSize(entry.type) != 1) return false;
  const uint8_t* begin = entry.value;
  const uint8_t* end = std::find(begin, begin + entry.count, 0);
  const auto isPrintable = [](uint8_t c) { return c >= ' ' && c <= '~'; };
  if (begin != end) return std::all_of(begin, end, isPrintable);
  return std::all_of(begin, std::end(entry.value), [](uint8_t c) { return c == 0; });
}

// Copies text up to a zero byte and fills the rest of the field with zeros. REQUIRES: the text is
// shorter than the field.
void copyText(char* field, size_t capacity, const char* text, size_t length) {
  std::strncpy(field, text, length);
  std::fill(field + length, field + capacity, '\0');
}

// Stores the value of one entry in one field.
class FieldFiller {
 public:
  // `isInEntry`: whether a value that may be at an offset is in the entry itself.
  FieldFiller(ExifFile& file, const IfdEntry& entry, const TagRow& row, void* record,
              bool isInEntry)
      : file_(file), entry_(entry), row_(row), record_(record), isInEntry_(isInEntry) {}

  // The value is in the entry. If the file ends before it does, the field is unchanged.
  void fillShort() {
    if (entry_.hasValueBytes(2)) storeNumber(file_.toShort(entry_.value));
  }
  void fillLong() {
    if (entry_.hasValueBytes(4)) storeNumber(file_.toLong(entry_.value));
  }
  void fillByType() { entry_.type == uint16_t(TiffType::short_) ? fillShort() : fillLong(); }
  void fillByte() {
    if (entry_.hasValueBytes(1)) *field() = entry_.value[0];
  }
  void fillRawText() {
    if (!entry_.hasValueBytes(1)) return;
    copyText(reinterpret_cast<char*>(field()), row_.capacity,
             reinterpret_cast<const char*>(entry_.value), row_.limit);
  }

  // The value field is an offset or holds a small value itself.
  void fillLongs(uint32_t longs) {
    const Bytes bytes = value(longs * sizeof(uint32_t));
    for (size_t i = 0; i < bytes.size() / sizeof(uint32_t); ++i)
      storeAt(i, file_.toLong(&bytes[i * sizeof(uint32_t)]));
  }
  void fillShorts(uint32_t shorts) {
    const Bytes bytes = value(shorts * sizeof(uint16_t));
    for (size_t i = 0; i < bytes.size() / sizeof(uint16_t); ++i)
      storeAt(i, file_.toShort(&bytes[i * sizeof(uint16_t)]));
  }
  void fillBytes() {
    const Bytes bytes = value(std::min<uint32_t>(entry_.count, row_.limit));
    std::memcpy(field(), bytes.data(), bytes.size());
  }
  void fillText() {
    const Bytes bytes = value(std::min<uint32_t>(entry_.count, row_.limit));
    copyText(reinterpret_cast<char*>(field()), row_.capacity,
             reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }
  // Two values are a point, three a circle, four a rectangle.
  void fillSubjectArea() {
    storeAt(2, uint16_t{0});
    storeAt(3, uint16_t{0});
    if (entry_.count >= 2 && entry_.count <= 4) fillShorts(entry_.count);
  }

 private:
  using Bytes = std::span<const uint8_t>;

  uint8_t* field() { return fieldBytes(record_, row_); }

  template <class Number>
  void storeAt(size_t index, Number value) {
    std::memcpy(field() + index * sizeof value, &value, sizeof value);
  }

  void storeNumber(uint32_t value) {
    if (row_.capacity == sizeof(uint16_t))
      storeAt(0, static_cast<uint16_t>(value));
    else
      storeAt(0, value);
  }

  // The first `length` bytes of the value, or as many as there are. Never null.
  Bytes value(size_t length) {
    if (!entry_.hasValueBytes(sizeof entry_.value)) return {entry_.value, size_t{0}};
    if (isInEntry_)
      return {entry_.value, std::min(length, static_cast<size_t>(sizeOfValue(entry_)))};
    return file_.bytesAt(file_.positionOf(file_.toLong(entry_.value)), length);
  }

  ExifFile& file_;
  const IfdEntry& entry_;
  const TagRow& row_;
  void* record_;
  bool isInEntry_;
};

// Fetches the value by the row's method. False if the entry is rejected, so that its flag must not
// be set.
bool fetchValue(const TagRow& row, const IfdEntry& entry, FieldFiller filler, ExifFile& file,
                DeferredEntries* deferred) {
  switch (row.fetch) {
    case Fetch::shortValue: filler.fillShort(); return true;
    case Fetch::longValue: filler.fillLong(); return true;
    case Fetch::shortOrLong: filler.fillByType(); return true;
    case Fetch::rawByte: filler.fillByte(); return true;
    case Fetch::rawText: filler.fillRawText(); return true;
    case Fetch::rationals: filler.fillLongs(row.limit * 2u); return true;
    case Fetch::shorts: filler.fillShorts(row.limit); return true;
    case Fetch::bytes: filler.fillBytes(); return true;
    case Fetch::text: filler.fillText(); return true;
    case Fetch::shortText:
      if (entry.count > row.limit) return false;
      filler.fillText();
      return true;
    case Fetch::subjectArea: filler.fillSubjectArea(); return true;
    case Fetch::isR98: return std::memcmp(entry.value, "R98", 4) == 0;
    case Fetch::makerNote: deferred->makerNote = entry; return true;
    case Fetch::userComment:
      if (entry.count < row.limit) return false;
      deferred->userComment = entry;
      return true;
    case Fetch::interoperability:
      if (entry.hasValueBytes(4)) deferred->noteInteroperability(file.toLong(entry.value));
      return true;
    case Fetch::skipped: return false;
  }
  return false;
}

}  // namespace

void DeferredEntries::noteInteroperability(uint32_t offset) {
  const auto begin = interoperability.begin();
  const auto end = begin + interoperabilityCount;
  auto known = std::find(begin, end, offset);
  if (known == end && interoperabilityCount < maxOffsets) {
    interoperability[interoperabilityCount++] = offset;
    return;
  }
  if (known == end) known = begin;
  std::rotate(known, known + 1, end);
  end[-1] = offset;
}

DirectoryWalk::DirectoryWalk(ExifFile& file, uint64_t position)
    : file_(file), entries_(file, position), valueArea_(entries_.endPosition() + linkSize) {}

bool DirectoryWalk::locateValue(const TagRow* row) {
  const uint64_t size = sizeOfValue(entry_);
  const bool isSmall = size <= sizeof entry_.value;
  if (isSmall && !(row && isReadAtOffset(*row))) return true;
  const uint64_t position = file_.positionOf(file_.toLong(entry_.value));
  if (isSmall && position != valueArea_) return holdsValue(*row, position);
  valueArea_ = position + size + size % 2;
  return false;
}

bool DirectoryWalk::holdsValue(const TagRow& row, uint64_t position) const {
  switch (row.fetch) {
    case Fetch::bytes:
    case Fetch::text:
    case Fetch::shortText: return looksLikeText(entry_);
    case Fetch::shorts:
    case Fetch::subjectArea:
      return entry_.type == static_cast<uint16_t>(TiffType::short_) &&
             (file_.toLong(entry_.value) > UINT16_MAX || position >= file_.size());
    default: return false;
  }
}

void DirectoryWalk::decodeEntry(const TagIndex& tags, void* record, DeferredEntries* deferred) {
  const TagRow* row = entry_.hasValueBytes(0) ? tags.find(entry_.tag) : nullptr;
  const bool isInEntry = locateValue(row);
  if (!row) return;
  const FieldFiller filler(file_, entry_, *row, record, isInEntry);
  const bool taken = fetchValue(*row, entry_, filler, file_, deferred);
  if (taken && row->flag != noField) setFlag(record, row->flag);
}

}  // namespace exifkeep
