// SPDX-License-Identifier: MIT
#include "info/info_list.h"

#include <exifkeep/field_list.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <typeinfo>

#include "info/display_rows.h"
#include "info/raw_value.h"
#include "info/value_text.h"
#include "read/read_metadata.h"
#include "read/record_field.h"

namespace exifkeep {

namespace {

CString textValue(const RecordField& field) {
  const std::string_view text = field.text();
  return {text.data(), static_cast<int>(text.size())};
}

std::string_view unitOf(ValueRule rule) {
  switch (rule) {
    case ValueRule::apex: return " (APEX)";
    case ValueRule::bcps: return " (BCPS)";
    default: return "";
  }
}

// REQUIRES: a denominator that is not 0.
CString decimalValue(const DisplayRow& row, const RecordField& field) {
  const std::string_view unit = unitOf(row.rule);
  if (row.source->type == TiffType::srational) {
    const SRational pair = field.as<SRational>();
    return decimalText(pair.numerator, pair.denominator, unit);
  }
  const Rational pair = field.as<Rational>();
  return decimalText(pair.numerator, pair.denominator, unit);
}

// Whether the rule shows an item. REQUIRES: the field is present.
bool isShown(const DisplayRow& row, const void* record) {
  const RecordField field(record, *row.source);
  switch (row.rule) {
    case ValueRule::decimal:
    case ValueRule::apex:
    case ValueRule::bcps:
    case ValueRule::focalLength: return field.as<Rational>().denominator != 0;
    case ValueRule::nonZeroNumber: return field.number() != 0;
    default: return true;
  }
}

// The text of a field. `state` is the call's. This and itemOf are inlined by force, so that texts
// are created where they stay. REQUIRES: isShown.
[[gnu::always_inline]] inline CString valueOf(const DisplayRow& row, const void* record,
                                              AFX_MAINTAIN_STATE2* state) {
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
    case ValueRule::decimal:
    case ValueRule::apex:
    case ValueRule::bcps: return decimalValue(row, field);
    case ValueRule::focalLength: return focalLengthText(field.as<Rational>());
    case ValueRule::number:
    case ValueRule::nonZeroNumber: return numberText(field.number());
    case ValueRule::makerNote: return bytesText(exif.makerNote, exif.makerNoteLength);
    case ValueRule::userComment: return bytesText(exif.userComment, exif.userCommentLength);
    case ValueRule::components: return componentsText(field.bytes());
    case ValueRule::word: return wordText(state, row.words->idOf(field.number()));
    case ValueRule::plain: break;  // set by describe
  }
  return {};
}

[[gnu::always_inline]] inline InfoItem itemOf(const DisplayRow& row, const void* record,
                                              AFX_MAINTAIN_STATE2* state) {
  return {wordText(state, row.label), valueOf(row, record, state)};
}

// Items share blocks of memory, freed with the last item of each.
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
  std::unique_ptr<std::byte[]> larger = nullptr;  // what a ValueSpace is too small for
};

// What the views of an InfoField point to, if it is not larger.
struct ValueSpace {
  ValueSpace() {}                                         // not set
  alignas(int64_t) std::byte bytes[6 * sizeof(int64_t)];  // three fractions, or a text
};

std::unique_ptr<std::byte[]> describe(const DisplayRow& row, const void* record, InfoField& field,
                                      ValueSpace& space) {
  auto larger = describeField(row, record, field, space.bytes);
  if (row.rule == ValueRule::plain) field.value = plainText(field);
  if (row.label == noLabel) field.label = field.name;
  return larger;
}

template <class Item>
struct Listed {
  static constexpr bool isField = std::is_same_v<Item, InfoField>;
  struct NoSpace {};

  // The texts are created in place: moving a CString takes as long as making a short one.
  Listed(const DisplayRow& row, const void* record, AFX_MAINTAIN_STATE2* state, ItemBlock& block)
      : head{&block}, item{itemOf(row, record, state)} {
    if constexpr (isField) head.larger = describe(row, record, item, space);
    ++block.holders;
  }
  ItemHead head;
  Item item;
  [[no_unique_address]] std::conditional_t<isField, ValueSpace, NoSpace> space;
};
static_assert(sizeof(ItemHead) % alignof(InfoField) == 0);  // nothing between head and item

// As many as fit into the largest block that the allocator caches for the thread (glibc's).
template <class Item>
constexpr size_t maxItemsOfBlock = (1032 - sizeof(ItemBlock)) / sizeof(Listed<Item>);

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
  // Inline, the loop would lack registers.
  [[gnu::noinline]] PresentRows(const DisplayTable& table, const void* record) {
    for (size_t i = 0; i < table.flags.size(); ++i) {
      rows_[count_] = &table.rows[i];
      count_ += isFlagSet(record, table.flags[i]);
    }
  }
  std::span<const DisplayRow* const> all() const { return {rows_.data(), count_}; }

 private:
  static constexpr size_t maxRows =
      std::max({imageDisplay.rows.size(), exifDisplay.rows.size(), gpsDisplay.rows.size()});
  std::array<const DisplayRow*, maxRows> rows_;  // not cleared
  size_t count_ = 0;
};

// REQUIRES: at most maxItemsOfBlock<Item> rows.
template <class Item>
void appendBlock(std::span<const DisplayRow* const> rows, const void* record, CPtrList& list) {
  const std::unique_ptr<ItemBlock, ReleaseBlock> block(
      new (::operator new(sizeof(ItemBlock) + rows.size() * sizeof(Listed<Item>))) ItemBlock);
  AFX_MAINTAIN_STATE2* const state = AFX_MAINTAIN_STATE2::current();  // looked up once
  auto* place = reinterpret_cast<Listed<Item>*>(block.get() + 1);
  for (const DisplayRow* row : rows) {
    if (!isShown(*row, record)) continue;
    auto* listed = new (place++) Listed<Item>(*row, record, state, *block);
    std::unique_ptr<InfoItem, ReleaseItem> item(&listed->item);
    list.AddTail(item.get());
    item.release();
  }
}

template <class Item>
void appendItems(const DisplayTable& table, const void* record, CPtrList& list) {
  const PresentRows present(table, record);
  for (auto rows = present.all(); !rows.empty();) {
    const size_t count = std::min(rows.size(), maxItemsOfBlock<Item>);
    appendBlock<Item>(rows.first(count), record, list);
    rows = rows.subspan(count);
  }
}

}  // namespace

void AppendImageInfoItems(const ImageIfdRecord& primary, CPtrList& list, bool isFieldList) {
  const auto append = isFieldList ? appendItems<InfoField> : appendItems<InfoItem>;
  append(imageDisplay, &primary, list);
}

void AppendExifInfoItems(const ExifIfdRecord& exif, CPtrList& list, bool isFieldList) {
  const auto append = isFieldList ? appendItems<InfoField> : appendItems<InfoItem>;
  append(exifDisplay, &exif, list);
}

void AppendGpsInfoItems(const GpsIfdRecord& gps, CPtrList& list) {
  appendItems<InfoField>(gpsDisplay, &gps, list);
}

bool FillInfoList(ExifReader& reader, const char* path, CPtrList& list) {
  ExifMetadata metadata;
  reader.maxValueLength = sizeof metadata.exif.userCommentCode + maxBytesShown;
  // A cast of a plain list would search its base classes.
  const bool isPlain = typeid(list) == typeid(CPtrList);
  const auto* fields = isPlain ? nullptr : dynamic_cast<const FieldList*>(&list);
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
