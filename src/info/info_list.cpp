// SPDX-License-Identifier: MIT
#include "info/info_list.h"

#include <exifkeep/field_list.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

#include "info/display_rows.h"
#include "info/raw_value.h"
#include "info/value_text.h"
#include "read/read_metadata.h"
#include "read/record_field.h"

namespace exifkeep {

namespace {

static_assert(std::ranges::all_of(exifDisplayRows, [](const DisplayRow& row) {
  return row.unit.size() <= maxUnitLength &&
         (row.rule != ValueRule::dateTime || row.source->capacity <= maxDateTimeLength);
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

// Whether the rule shows an item. REQUIRES: the field is present.
bool isShown(const DisplayRow& row, const void* record) {
  const RecordField field(record, *row.source);
  switch (row.rule) {
    case ValueRule::decimal:
    case ValueRule::focalLength: return field.as<Rational>().denominator != 0;
    case ValueRule::nonZeroNumber: return field.number() != 0;
    default: return true;
  }
}

// The text of a field. REQUIRES: isShown.
CString valueOf(const DisplayRow& row, const void* record) {
  const RecordField field(record, *row.source);
  const auto& exif = *static_cast<const ExifIfdRecord*>(record);
  switch (row.rule) {
    case ValueRule::text: return textValue(field);
    case ValueRule::dateTime: return dateTimeText(field.text());
    case ValueRule::version: return versionText(field.bytes());
    case ValueRule::exifVersion:
      return exifVersionText(exif.exifVersion, exif.isR98Interoperability != 0);
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

InfoItem itemOf(const DisplayRow& row, const void* record) {
  return {wordText(row.label), valueOf(row, record)};
}

// Items share blocks of memory, freed with the last item of each: one allocation instead of eight.
// A block is small enough for the allocator's cache of the thread (glibc's: 1032 bytes).
constexpr size_t maxItemsOfBlock = 8;

struct alignas(std::max_align_t) ItemBlock {
  size_t holders = 1;  // the number of items, plus 1 while items are being created
};

struct ReleaseBlock {
  void operator()(ItemBlock* block) const {
    if (--block->holders == 0) ::operator delete(block);
  }
};

// Is in front of every item.
struct ItemHead {
  ItemBlock* block;
  std::unique_ptr<std::byte[]> described = nullptr;  // the memory of an InfoField's views
};

std::unique_ptr<std::byte[]> describe(const DisplayRow& row, const void* record, InfoField& field) {
  auto described = describeField(row, record, field);
  if (row.rule == ValueRule::plain) field.value = plainText(field);
  if (row.label == noLabel) field.label = field.name;
  return described;
}

template <class Item>
struct Listed {
  // The texts are created in place: moving a CString takes as long as making a short one.
  Listed(const DisplayRow& row, const void* record, ItemBlock& block)
      : head{&block}, item{itemOf(row, record)} {
    if constexpr (std::is_same_v<Item, InfoField>) head.described = describe(row, record, item);
    ++block.holders;
  }
  ItemHead head;
  Item item;
};
static_assert(sizeof(ItemHead) % alignof(InfoField) == 0);  // nothing between head and item

struct ReleaseItem {
  // An InfoField's other members have no destructor.
  void operator()(InfoItem* item) const {
    ItemHead* head = reinterpret_cast<ItemHead*>(item) - 1;
    ItemBlock* block = head->block;
    std::destroy_at(item);
    std::destroy_at(head);
    ReleaseBlock()(block);
  }
};

// Elements are null or were added by appendItems: hosts must not add their own.
void release(void* element) {
  if (element) ReleaseItem()(static_cast<InfoItem*>(element));
}

// The rows of fields that are present, collected without branches, which would be mispredicted.
class PresentRows {
 public:
  PresentRows(std::span<const DisplayRow> rows, const void* record) {
    for (const DisplayRow& row : rows) {
      rows_[count_] = &row;
      count_ += RecordField(record, *row.source).isPresent();
    }
  }
  std::span<const DisplayRow* const> all() const { return {rows_.data(), count_}; }

 private:
  static constexpr size_t maxRows =
      std::max({imageDisplayRows.size(), exifDisplayRows.size(), gpsDisplayRows.size()});
  std::array<const DisplayRow*, maxRows> rows_;  // not cleared
  size_t count_ = 0;
};

// REQUIRES: at most maxItemsOfBlock rows.
template <class Item>
void appendBlock(std::span<const DisplayRow* const> rows, const void* record, CPtrList& list) {
  const std::unique_ptr<ItemBlock, ReleaseBlock> block(
      new (::operator new(sizeof(ItemBlock) + rows.size() * sizeof(Listed<Item>))) ItemBlock);
  auto* place = reinterpret_cast<Listed<Item>*>(block.get() + 1);
  for (const DisplayRow* row : rows) {
    if (!isShown(*row, record)) continue;
    auto* listed = new (place++) Listed<Item>(*row, record, *block);
    std::unique_ptr<InfoItem, ReleaseItem> item(&listed->item);
    list.AddTail(item.get());
    item.release();
  }
}

template <class Item>
void appendItems(std::span<const DisplayRow> displayRows, const void* record, CPtrList& list) {
  const PresentRows present(displayRows, record);
  for (auto rows = present.all(); !rows.empty();) {
    const size_t count = std::min(rows.size(), maxItemsOfBlock);
    appendBlock<Item>(rows.first(count), record, list);
    rows = rows.subspan(count);
  }
}

}  // namespace

void AppendImageInfoItems(const ImageIfdRecord& primary, CPtrList& list, bool isFieldList) {
  const auto append = isFieldList ? appendItems<InfoField> : appendItems<InfoItem>;
  append(imageDisplayRows, &primary, list);
}

void AppendExifInfoItems(const ExifIfdRecord& exif, CPtrList& list, bool isFieldList) {
  const auto append = isFieldList ? appendItems<InfoField> : appendItems<InfoItem>;
  append(exifDisplayRows, &exif, list);
}

void AppendGpsInfoItems(const GpsIfdRecord& gps, CPtrList& list) {
  appendItems<InfoField>(gpsDisplayRows, &gps, list);
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
