/// @file
/// Metadata for programs, beside the texts for people: a list that gives each item's tag, name,
/// directory and value as the file has it. None of them depends on the language.
///
///     exifkeep::FieldList list;
///     if (GetExifInfo("photo.jpg", &list))
///       list.forEach([](const exifkeep::InfoField& field) { use(field.name, field.numbers); });
#pragma once

#include <exifkeep/exifkeep.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace exifkeep {

/// One entry of a FieldList. What its views point to lives as long as the item.
struct InfoField : InfoItem {
  /// Where the tag is: IFD0, the Exif directory or the GPS directory (Exif 2.2, 4.6.3).
  enum class Directory : uint8_t { image, exif, gps };
  /// Which of `numbers` and `bytes` has the value, and how.
  enum class Kind : uint8_t {
    text,       ///< `bytes`: text up to its first NUL, in whatever charset the file has it
    bytes,      ///< `bytes`: of a maker note or a comment, at most the first 255 and, of a comment,
                ///< its character code of 8 bytes
    numbers,    ///< `numbers`
    rationals,  ///< `numbers`: numerator and denominator in turn
  };

  const char* name = "";             ///< The tag's name in the standard, such as "ExposureTime".
  std::span<const int64_t> numbers;  ///< Empty for text and bytes.
  std::string_view bytes;            ///< Empty for numbers.
  uint16_t tag = 0;                  ///< The tag's number, such as 0x829A.
  Directory directory = Directory::image;  ///< Where the tag is.
  Kind kind = Kind::text;                  ///< What the value is.
};

/// A list that asks GetExifInfo for InfoField items: it recognises the type of the list it is
/// given. Items, their order and their texts are those of any other list, but that GPS fields come
/// after them when they are wanted. Gives its items back by itself.
class FieldList : public CPtrList {
 public:
  /// Whether to list the GPS directory too (Exif 2.2, 4.6.6). There are no labels for its fields in
  /// the languages: they are labelled by their names.
  bool withGps = false;

  FieldList() = default;
  ~FieldList() override { FreeInfoList(this); }

  /// Calls `visit` with each item, a `const InfoField&`.
  template <class Visit>
  void forEach(Visit visit) const {
    for (POSITION place = GetHeadPosition(); place;)
      visit(static_cast<const InfoField&>(*static_cast<const InfoItem*>(GetNext(place))));
  }
};

}  // namespace exifkeep
