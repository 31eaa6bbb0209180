// SPDX-License-Identifier: MIT
#include "info/raw_value.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "info/value_text.h"
#include "read/record_field.h"

namespace exifkeep {

namespace {

using Kind = InfoField::Kind;
using Directory = InfoField::Directory;

// Sets the directory and the name. The tables are separate arrays: a row belongs to the one that
// contains it.
void identify(const TagRow& row, InfoField& field) {
  struct Table {
    TagTable rows;
    std::span<const NamedTag> named;
    Directory directory;
  };
  static constexpr Table tables[] = {{imageTags, namedImageTags, Directory::image},
                                     {exifTags, namedExifTags, Directory::exif},
                                     {gpsTags, namedGpsTags, Directory::gps}};
  for (const auto& [rows, named, directory] : tables) {
    if (&row < &rows.front() || &row > &rows.back()) continue;
    field.directory = directory;
    field.name = named[static_cast<size_t>(&row - rows.data())].name;
  }
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

// The memory for a field's values.
struct Kept {
  std::byte* take(size_t size) {
    if (size <= space.size()) return space.data();
    larger = std::make_unique_for_overwrite<std::byte[]>(size);
    return larger.get();
  }
  std::span<std::byte> space;
  std::unique_ptr<std::byte[]> larger = nullptr;
};

// `count` consecutive values in `bytes`.
template <class Value>
void keepNumbers(const char* bytes, size_t count, InfoField& field, Kept& kept) {
  auto* numbers = reinterpret_cast<int64_t*>(kept.take(count * sizeof(int64_t)));
  for (size_t i = 0; i < count; ++i) {
    Value value;
    std::memcpy(&value, bytes + i * sizeof value, sizeof value);
    numbers[i] = value;
  }
  field.numbers = {numbers, count};
}

void keepNumbersOf(const TagRow& row, const char* bytes, InfoField& field, Kept& kept) {
  switch (row.fetch) {
    case Fetch::rationals:
      return row.type == TiffType::srational
                 ? keepNumbers<int32_t>(bytes, 2 * row.limit, field, kept)
                 : keepNumbers<uint32_t>(bytes, 2 * row.limit, field, kept);
    case Fetch::rawText: return keepNumbers<uint8_t>(bytes, row.limit, field, kept);
    case Fetch::rawByte: return keepNumbers<uint8_t>(bytes, 1, field, kept);
    case Fetch::shortValue:
      if (row.capacity == sizeof(uint16_t)) return keepNumbers<uint16_t>(bytes, 1, field, kept);
      [[fallthrough]];
    default: return keepNumbers<uint32_t>(bytes, 1, field, kept);
  }
}

void keepBytes(std::string_view bytes, InfoField& field, Kept& kept) {
  char* copy = reinterpret_cast<char*>(kept.take(bytes.size()));
  std::ranges::copy(bytes, copy);
  field.bytes = {copy, bytes.size()};
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
                                           InfoField& field, std::span<std::byte> space) {
  const TagRow& source = *row.source;
  identify(source, field);
  field.tag = source.tag;
  field.kind = kindOf(row);
  Kept kept{space};
  if (field.kind == Kind::text || field.kind == Kind::bytes)
    keepBytes(bytesOf(source, field.kind, record), field, kept);
  else
    keepNumbersOf(source, RecordField(record, source).bytes(), field, kept);
  return std::move(kept.larger);
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
