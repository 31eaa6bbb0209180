// SPDX-License-Identifier: MIT
/// @file
/// Metadata for programs: a list whose items also have the tag, its name and directory, and the
/// value as stored in the file. None of these depends on the language.
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

/// One entry of a FieldList. Its views are valid as long as the item.
struct InfoField : InfoItem {
  /// Where the tag is: IFD0, the Exif directory or the GPS directory (Exif 2.2, 4.6.3).
  enum class Directory : uint8_t { image, exif, gps };
  /// What the value is, and whether it is in `numbers` or in `bytes`.
  enum class Kind : uint8_t {
    text,       ///< `bytes`: text up to its first NUL, in the charset of the file
    bytes,      ///< `bytes`: at most the first 255 of a maker note, or the 8-byte character code
                ///< and at most 255 more of a comment
    numbers,    ///< `numbers`
    rationals,  ///< `numbers`: each numerator followed by its denominator
  };

  const char* name = "";  ///< The tag's name in the standard, such as "ExposureTime".
  std::span<const int64_t> numbers = {};   ///< Empty for text and bytes.
  std::string_view bytes = {};             ///< Empty for numbers.
  uint16_t tag = 0;                        ///< The tag's number, such as 0x829A.
  Directory directory = Directory::image;  ///< Where the tag is.
  Kind kind = Kind::text;                  ///< What the value is.
};

/// A list into which GetExifInfo puts InfoField items; it recognises the type of the list. The
/// items, their order and their texts are the same as in any other list, except that GPS fields
/// follow if requested. The destructor frees the items.
class FieldList : public CPtrList {
 public:
  /// Whether to list the GPS directory too (Exif 2.2, 4.6.6). Its fields have no labels in any
  /// language; their label is their name.
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
