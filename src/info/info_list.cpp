// SPDX-License-Identifier: MIT
#include "info/info_list.h"

#include <exifkeep/field_list.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>

#include "info/display_rows.h"
#include "info/raw_value.h"
#include "info/value_text.h"
#include "read/read_metadata.h"
#include "read/record_field.h"

namespace exifkeep {

namespace {

static_assert(std::ranges::all_of(exifDisplayRows, [](const DisplayRow& row) {
  return row.unit.size() <= maxUnitLength;
}));

CString textValue(const RecordField& field) {
  const std::string_view text = field.text();
  return {text.data(), static_cast<int>(text.size())};
}

// REQUIRES: a denominator that is not 0.
CString decimalValue(const DisplayRow& row, const RecordField& field) {
  if (row.source->type == TiffType::srational) {
    const SRational pair = field.as<SRational>();
    return decimalText(pair.numerator, pair.denominator, row.unit);
  }
  const Rational pair = field.as<Rational>();
  return decimalText(pair.numerator, pair.denominator, row.unit);
}

// Whether the field is present and its rule shows an item.
bool isShown(const DisplayRow& row, const void* record) {
  const RecordField field(record, *row.source);
  if (!field.isPresent()) return false;
  switch (row.rule) {
    case ValueRule::decimal:
    case ValueRule::focalLength: return field.as<Rational>().denominator != 0;
    case ValueRule::nonZeroNumber: return field.number() != 0;
    default: return true;
  }
}

CString exifVersionValue(const ExifIfdRecord& exif) {
  CString text = versionText(exif.exifVersion);
  if (exif.isR98Interoperability) text += wordText(word::r98);
  return text;
}

// The text of a field. REQUIRES: isShown.
CString valueOf(const DisplayRow& row, const void* record) {
  const RecordField field(record, *row.source);
  const auto& exif = *static_cast<const ExifIfdRecord*>(record);
  switch (row.rule) {
    case ValueRule::text: return textValue(field);
    case ValueRule::dateTime: return dateTimeText(field.text());
    case ValueRule::version: return versionText(field.bytes());
    case ValueRule::exifVersion: return exifVersionValue(exif);
    case ValueRule::wholeRational: return wholeRationalText(field.as<Rational>());
    case ValueRule::exposureTime: return exposureTimeText(field.as<Rational>());
    case ValueRule::decimal: return decimalValue(row, field);
    case ValueRule::focalLength: return focalLengthText(field.as<Rational>());
    case ValueRule::number:
    case ValueRule::nonZeroNumber: return numberText(field.number());
    case ValueRule::makerNote: return bytesText(exif.makerNote, exif.makerNoteLength);
    case ValueRule::userComment: return bytesText(exif.userComment, exif.userCommentLength);
    case ValueRule::components: return componentsText(field.bytes());
    case ValueRule::word: return wordText(row.words->idOf(field.number()));
    case ValueRule::plain: break;  // set by describe
  }
  return {};
}

// All items of a directory share one block of memory, freed with the last item: one allocation
// instead of some twenty.
struct alignas(std::max_align_t) ItemBlock {
  size_t holders = 1;  // the number of items, plus 1 while items are being created
};

struct ReleaseBlock {
  void operator()(ItemBlock* block) const {
    if (--block->holders == 0) ::operator delete(block);
  }
};

// All are InfoFields, but only a FieldList has the additional members filled in.
struct ListedItem : InfoField {
  ListedItem(const DisplayRow& row, const void* record, ItemBlock& home) : block(&home) {
    label.LoadString(row.label);
    value = valueOf(row, record);
    ++home.holders;
  }
  ItemBlock* block;
  std::unique_ptr<std::byte[]> described;
};

struct ReleaseItem {
  void operator()(ListedItem* item) const {
    ItemBlock* block = item->block;
    std::destroy_at(item);
    ReleaseBlock()(block);
  }
};

// Elements are null or were added by appendItems: hosts must not add their own.
void release(void* element) {
  if (element) ReleaseItem()(static_cast<ListedItem*>(static_cast<InfoItem*>(element)));
}

class ShownRows {
 public:
  ShownRows(std::span<const DisplayRow> rows, const void* record) {
    for (const DisplayRow& row : rows) {
      rows_[count_] = &row;
      count_ += isShown(row, record);
    }
  }
  size_t size() const { return count_; }
  auto begin() const { return rows_.begin(); }
  auto end() const { return rows_.begin() + count_; }

 private:
  static constexpr size_t maxRows =
      std::max({imageDisplayRows.size(), exifDisplayRows.size(), gpsDisplayRows.size()});
  std::array<const DisplayRow*, maxRows> rows_;  // not cleared
  size_t count_ = 0;
};

void describe(const DisplayRow& row, const void* record, ListedItem& item) {
  item.described = describeField(row, record, item);
  if (row.rule == ValueRule::plain) item.value = plainText(item);
  if (row.label == noLabel) item.label = item.name;
}

void appendItems(std::span<const DisplayRow> displayRows, const void* record, CPtrList& list,
                 bool isFieldList) {
  const ShownRows rows(displayRows, record);
  if (rows.size() == 0) return;
  const std::unique_ptr<ItemBlock, ReleaseBlock> block(
      new (::operator new(sizeof(ItemBlock) + rows.size() * sizeof(ListedItem))) ItemBlock);
  auto* place = reinterpret_cast<ListedItem*>(block.get() + 1);
  for (const DisplayRow* row : rows) {
    std::unique_ptr<ListedItem, ReleaseItem> item(std::construct_at(place++, *row, record, *block));
    if (isFieldList) describe(*row, record, *item);
    list.AddTail(static_cast<InfoItem*>(item.get()));
    item.release();
  }
}

}  // namespace

void AppendImageInfoItems(const ImageIfdRecord& primary, CPtrList& list, bool isFieldList) {
  appendItems(imageDisplayRows, &primary, list, isFieldList);
}

void AppendExifInfoItems(const ExifIfdRecord& exif, CPtrList& list, bool isFieldList) {
  appendItems(exifDisplayRows, &exif, list, isFieldList);
}

void AppendGpsInfoItems(const GpsIfdRecord& gps, CPtrList& list) {
  appendItems(gpsDisplayRows, &gps, list, true);
}

bool FillInfoList(ExifReader& reader, const char* path, CPtrList& list) {
  ExifMetadata metadata;
  reader.maxValueLength = sizeof metadata.exif.userCommentCode + maxBytesShown;
  const auto* fields = dynamic_cast<const FieldList*>(&list);
  const bool withGps = fields && fields->withGps;
  if (withGps) metadata.gps = {};
  const bool isRead = withGps ? readExifMetadata(reader, path, metadata)
                              : readListedMetadata(reader, path, metadata);
  if (!isRead) return false;
  const int before = list.GetCount();
  try {
    AppendImageInfoItems(metadata.primary, list, fields);
    AppendExifInfoItems(metadata.exif, list, fields);
    if (withGps) AppendGpsInfoItems(metadata.gps, list);
  } catch (...) {
    while (list.GetCount() > before) release(list.RemoveTail());
    throw;
  }
  return true;
}

void emptyInfoList(CPtrList& list) {
  for (POSITION place = list.GetHeadPosition(); place;) release(list.GetNext(place));
  list.RemoveAll();
}

}  // namespace exifkeep
