#include "info/info_list.h"

#include <exifkeep/field_list.h>

#include <algorithm>
#include <cstring>
#include <memory>

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

// False if the denominator is 0.
bool decimalValue(const DisplayRow& row, const RecordField& field, CString& value) {
  if (field.as<Rational>().denominator == 0) return false;
  if (row.source->type == TiffType::srational) {
    const SRational pair = field.as<SRational>();
    value = decimalText(pair.numerator, pair.denominator, row.unit);
  } else {
    const Rational pair = field.as<Rational>();
    value = decimalText(pair.numerator, pair.denominator, row.unit);
  }
  return true;
}

bool focalLengthValue(const RecordField& field, CString& value) {
  const Rational length = field.as<Rational>();
  if (length.denominator == 0) return false;
  value = focalLengthText(length);
  return true;
}

bool nonZeroValue(const RecordField& field, CString& value) {
  if (field.number() == 0) return false;
  value = numberText(field.number());
  return true;
}

CString exifVersionValue(const ExifIfdRecord& exif) {
  CString text = versionText(exif.exifVersion);
  if (exif.isR98Interoperability) text += wordText(word::r98);
  return text;
}

// The text of a present field; false if its rule shows no item for this value.
bool valueOf(const DisplayRow& row, const void* record, CString& value) {
  const RecordField field(record, *row.source);
  const auto exif = [&]() -> const ExifIfdRecord& {
    return *static_cast<const ExifIfdRecord*>(record);
  };
  switch (row.rule) {
    case ValueRule::text: value = textValue(field); return true;
    case ValueRule::dateTime: value = dateTimeText(textValue(field)); return true;
    case ValueRule::version: value = versionText(field.bytes()); return true;
    case ValueRule::exifVersion: value = exifVersionValue(exif()); return true;
    case ValueRule::wholeRational: value = wholeRationalText(field.as<Rational>()); return true;
    case ValueRule::exposureTime: value = exposureTimeText(field.as<Rational>()); return true;
    case ValueRule::decimal: return decimalValue(row, field, value);
    case ValueRule::focalLength: return focalLengthValue(field, value);
    case ValueRule::number: value = numberText(field.number()); return true;
    case ValueRule::nonZeroNumber: return nonZeroValue(field, value);
    case ValueRule::makerNote:
      value = bytesText(exif().makerNote, exif().makerNoteLength);
      return true;
    case ValueRule::userComment:
      value = bytesText(exif().userComment, exif().userCommentLength);
      return true;
    case ValueRule::components: value = componentsText(field.bytes()); return true;
    case ValueRule::plain: return true;  // set by appendItems once the item is described
    case ValueRule::word: value.LoadString(row.words->idOf(field.number())); return true;
  }
  return false;
}

// All items of a directory share one array, freed with the last item: one allocation instead of
// some twenty. All are InfoFields, but only a FieldList has the additional members filled in.
struct ListedItem : InfoField {
  ListedItem* array;  // its first element
  size_t holders;     // in the first: the items in a list, and 1 while the array is being filled
  std::unique_ptr<std::byte[]> described;
};

struct ReleaseItem {
  void operator()(ListedItem* item) const {
    if (--item->array->holders == 0) delete[] item->array;
  }
};

void appendItems(std::span<const DisplayRow> rows, const void* record, CPtrList& list) {
  const auto present = [&](const DisplayRow& row) {
    return RecordField(record, *row.source).isPresent();
  };
  const auto maxItems = static_cast<size_t>(std::ranges::count_if(rows, present));
  if (maxItems == 0) return;
  const bool describe = dynamic_cast<const FieldList*>(&list) != nullptr;
  const std::unique_ptr<ListedItem, ReleaseItem> array(new ListedItem[maxItems]);
  array->array = array.get();
  array->holders = 1;
  ListedItem* item = array.get();
  for (const DisplayRow& row : rows) {
    if (!present(row) || !valueOf(row, record, item->value)) continue;
    if (describe) item->described = describeField(row, record, *item);
    if (row.rule == ValueRule::plain) item->value = plainText(*item);
    if (row.label == noLabel)
      item->label = item->name;
    else
      item->label.LoadString(row.label);
    item->array = array.get();
    list.AddTail(static_cast<InfoItem*>(item));
    ++array->holders;
    ++item;
  }
}

}  // namespace

void AppendImageInfoItems(const ImageIfdRecord& primary, CPtrList& list) {
  appendItems(imageDisplayRows, &primary, list);
}

void AppendExifInfoItems(const ExifIfdRecord& exif, CPtrList& list) {
  appendItems(exifDisplayRows, &exif, list);
}

void AppendGpsInfoItems(const GpsIfdRecord& gps, CPtrList& list) {
  appendItems(gpsDisplayRows, &gps, list);
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
    AppendImageInfoItems(metadata.primary, list);
    AppendExifInfoItems(metadata.exif, list);
    if (withGps) AppendGpsInfoItems(metadata.gps, list);
  } catch (...) {
    shrinkInfoList(list, before);
    throw;
  }
  return true;
}

void shrinkInfoList(CPtrList& list, int count) {
  while (list.GetCount() > count) {
    // Elements are null or were added by appendItems: hosts must not add their own.
    auto* item = static_cast<ListedItem*>(static_cast<InfoItem*>(list.RemoveTail()));
    if (item) ReleaseItem()(item);
  }
}

}  // namespace exifkeep
