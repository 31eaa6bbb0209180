// SPDX-License-Identifier: MIT
#include "info/raw_value.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "info/value_text.h"
#include "read/record_field.h"

namespace exifkeep {

namespace {

using Kind = InfoField::Kind;
using Directory = InfoField::Directory;

// The three tables are separate arrays: a row belongs to the one that contains it.
Directory directoryOf(const TagRow& row) {
  const auto isIn = [&row](TagTable table) {
    return &row >= &table.front() && &row <= &table.back();
  };
  if (isIn(imageTags)) return Directory::image;
  return isIn(exifTags) ? Directory::exif : Directory::gps;
}

Kind kindOf(const DisplayRow& row) {
  if (row.rule == ValueRule::components) return Kind::numbers;
  switch (row.source->fetch) {
    case Fetch::rationals: return Kind::rationals;
    case Fetch::makerNote:
    case Fetch::userComment: return Kind::bytes;
    case Fetch::rawText: return row.source->type == TiffType::byte ? Kind::numbers : Kind::text;
    case Fetch::bytes: return row.source->type == TiffType::ascii ? Kind::text : Kind::bytes;
    case Fetch::text:
    case Fetch::shortText: return Kind::text;
    default: return Kind::numbers;
  }
}

// `count` consecutive values in `bytes`.
template <class Value>
std::vector<int64_t> numbersIn(const char* bytes, size_t count) {
  std::vector<int64_t> numbers;
  for (size_t i = 0; i < count; ++i) {
    Value value;
    std::memcpy(&value, bytes + i * sizeof value, sizeof value);
    numbers.push_back(value);
  }
  return numbers;
}

std::vector<int64_t> numbersOf(const TagRow& row, const char* bytes) {
  switch (row.fetch) {
    case Fetch::rationals:
      return row.type == TiffType::srational ? numbersIn<int32_t>(bytes, 2 * row.limit)
                                             : numbersIn<uint32_t>(bytes, 2 * row.limit);
    case Fetch::rawText: return numbersIn<uint8_t>(bytes, row.limit);
    case Fetch::rawByte: return numbersIn<uint8_t>(bytes, 1);
    case Fetch::shortValue:
      if (row.capacity == sizeof(uint16_t)) return numbersIn<uint16_t>(bytes, 1);
      [[fallthrough]];
    default: return numbersIn<uint32_t>(bytes, 1);
  }
}

// The character code may be present without a comment.
std::string_view userCommentOf(const ExifIfdRecord& exif) {
  constexpr size_t codeLength = sizeof exif.userCommentCode;
  if (!exif.userComment) return {exif.userCommentCode, codeLength};
  return {reinterpret_cast<const char*>(exif.userComment) - codeLength,
          codeLength + exif.userCommentLength};
}

// The text, or the bytes of a field of fixed size without trailing zeros.
std::string_view bytesOf(const TagRow& row, Kind kind, const void* record) {
  const auto& exif = *static_cast<const ExifIfdRecord*>(record);
  if (row.fetch == Fetch::userComment) return userCommentOf(exif);
  if (row.fetch == Fetch::makerNote)
    return {reinterpret_cast<const char*>(exif.makerNote),
            std::min<size_t>(exif.makerNoteLength, maxBytesShown)};
  const RecordField field(record, row);
  if (kind == Kind::text) return field.text();
  const std::string_view stored(field.bytes(), row.capacity);
  return stored.substr(0, stored.find_last_not_of('\0') + 1);
}

}  // namespace

std::unique_ptr<std::byte[]> describeField(const DisplayRow& row, const void* record,
                                           InfoField& field) {
  const TagRow& source = *row.source;
  field.directory = directoryOf(source);
  field.tag = source.tag;
  field.name = source.name;
  field.kind = kindOf(row);
  if (field.kind == Kind::text || field.kind == Kind::bytes) {
    const std::string_view bytes = bytesOf(source, field.kind, record);
    auto kept = std::make_unique<std::byte[]>(bytes.size());
    std::ranges::copy(std::as_bytes(std::span(bytes)), kept.get());
    field.bytes = {reinterpret_cast<const char*>(kept.get()), bytes.size()};
    return kept;
  }
  const auto numbers = numbersOf(source, RecordField(record, source).bytes());
  auto kept = std::make_unique<std::byte[]>(numbers.size() * sizeof(int64_t));
  std::memcpy(kept.get(), numbers.data(), numbers.size() * sizeof(int64_t));
  field.numbers = {reinterpret_cast<const int64_t*>(kept.get()), numbers.size()};
  return kept;
}

CString plainText(const InfoField& field) {
  constexpr size_t codeLength = 8;
  if (field.kind == Kind::text) return bytesText(field.bytes.data(), field.bytes.size());
  if (field.kind == Kind::bytes) {
    const std::string_view text = field.bytes.substr(std::min(codeLength, field.bytes.size()));
    return bytesText(text.data(), text.size());
  }
  CString text;
  for (size_t i = 0; i < field.numbers.size(); ++i) {
    const auto number = static_cast<uint32_t>(field.numbers[i]);
    if (i > 0) text += ' ';
    if (field.kind == Kind::numbers)
      text += numberText(number);
    else
      text += wholeRationalText({number, static_cast<uint32_t>(field.numbers[++i])});
  }
  return text;
}

}  // namespace exifkeep
