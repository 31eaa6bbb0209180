// SPDX-License-Identifier: MIT
// The fields that are shown: their order, labels and rules.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <span>

#include "info/words.h"
#include "read/tag_tables.h"

namespace exifkeep {

enum class ValueRule : uint8_t {
  text,         // the stored text up to its first zero byte
  dateTime,     // the date's colons become slashes
  version,      // four digits as a number
  exifVersion,  // the same, followed by "(R98)" for files that follow those interoperability rules
  wholeRational,  // as stored
  exposureTime,   // as stored, in seconds
  decimal,        // the quotient; no item for a denominator of 0
  apex,           // likewise, followed by "(APEX)"
  bcps,           // likewise, followed by "(BCPS)"
  focalLength,    // likewise, in millimetres
  number,
  nonZeroNumber,  // no item for 0
  makerNote,      // the start of the bytes as text
  userComment,    // likewise, after the character code
  components,     // the letters of the four components
  word,           // the row's word for the value
  plain,          // numbers, text or bytes as stored, in no language
};

inline constexpr uint16_t noLabel = 0;

struct DisplayRow {
  uint16_t label = noLabel;  // without one, the tag's name in the standard is shown
  ValueRule rule = ValueRule::plain;
  const TagRow* source = nullptr;
  const WordTable* words = nullptr;
};

namespace display_rows_detail {

consteval DisplayRow image(uint16_t label, uint16_t tag, ValueRule rule) {
  return {label, rule, &knownTag(imageTags, tag)};
}
consteval DisplayRow image(uint16_t label, uint16_t tag, const WordTable& words) {
  return {label, ValueRule::word, &knownTag(imageTags, tag), &words};
}
consteval DisplayRow exif(uint16_t label, uint16_t tag, ValueRule rule) {
  return {label, rule, &knownTag(exifTags, tag)};
}
consteval DisplayRow exif(uint16_t label, uint16_t tag, const WordTable& words) {
  return {label, ValueRule::word, &knownTag(exifTags, tag), &words};
}

// clang-format off
inline constexpr auto imageRows = std::to_array<DisplayRow>({
    image(1, tag::imageDescription, ValueRule::text),
    image(2, tag::artist, ValueRule::text),
    image(3, tag::copyright, ValueRule::text),
    image(4, tag::make, ValueRule::text),
    image(153, tag::model, ValueRule::text),
    image(5, tag::orientation, words::orientation),
    image(6, tag::xResolution, ValueRule::wholeRational),
    image(7, tag::yResolution, ValueRule::wholeRational),
    image(8, tag::resolutionUnit, words::resolutionUnit),
    image(9, tag::software, ValueRule::text),
    image(10, tag::dateTime, ValueRule::dateTime),
    image(11, tag::yCbCrPositioning, words::positioning),
    image(12, tag::imageWidth, ValueRule::number),
    image(13, tag::imageLength, ValueRule::number),
});

inline constexpr auto exifRows = std::to_array<DisplayRow>({
    exif(25, tag::exposureTime, ValueRule::exposureTime),
    exif(26, tag::fNumber, ValueRule::decimal),
    exif(27, tag::exposureProgram, words::exposureProgram),
    exif(28, tag::isoSpeedRatings, ValueRule::nonZeroNumber),
    exif(29, tag::exifVersion, ValueRule::exifVersion),
    exif(30, tag::dateTimeOriginal, ValueRule::dateTime),
    exif(31, tag::dateTimeDigitized, ValueRule::dateTime),
    exif(32, tag::componentsConfiguration, ValueRule::components),
    exif(33, tag::compressedBitsPerPixel, ValueRule::decimal),
    exif(34, tag::shutterSpeedValue, ValueRule::apex),
    exif(35, tag::apertureValue, ValueRule::apex),
    exif(36, tag::exposureBiasValue, ValueRule::apex),
    exif(37, tag::maxApertureValue, ValueRule::apex),
    exif(38, tag::meteringMode, words::meteringMode),
    exif(39, tag::lightSource, words::lightSource),
    exif(40, tag::flash, words::flash),
    exif(41, tag::focalLength, ValueRule::focalLength),
    exif(42, tag::makerNote, ValueRule::makerNote),
    exif(43, tag::userComment, ValueRule::userComment),
    exif(44, tag::flashpixVersion, ValueRule::version),
    exif(45, tag::colorSpace, words::colorSpace),
    exif(46, tag::pixelXDimension, ValueRule::number),
    exif(47, tag::pixelYDimension, ValueRule::number),
    exif(48, tag::focalPlaneXResolution, ValueRule::decimal),
    exif(49, tag::focalPlaneYResolution, ValueRule::decimal),
    exif(50, tag::focalPlaneResolutionUnit, words::resolutionUnit),
    exif(51, tag::sensingMethod, words::sensingMethod),
    exif(52, tag::fileSource, words::fileSource),
    exif(53, tag::sceneType, words::sceneType),
    exif(54, tag::relatedSoundFile, ValueRule::text),
    exif(55, tag::subSecTime, ValueRule::dateTime),
    exif(56, tag::subSecTimeDigitized, ValueRule::dateTime),
    exif(57, tag::subSecTimeOriginal, ValueRule::dateTime),
    exif(58, tag::flashEnergy, ValueRule::bcps),
    exif(59, tag::brightnessValue, ValueRule::apex),
    exif(60, tag::sharpness, words::softness),
    exif(61, tag::saturation, words::saturation),
    exif(62, tag::contrast, words::softness),
    exif(63, tag::gainControl, words::gainControl),
    exif(64, tag::sceneCaptureType, words::sceneCaptureType),
    exif(65, tag::digitalZoomRatio, ValueRule::decimal),
    exif(66, tag::whiteBalance, words::whiteBalance),
    exif(67, tag::exposureMode, words::exposureMode),
    exif(68, tag::customRendered, words::customRendered),
    exif(69, tag::exposureIndex, ValueRule::decimal),
    exif(70, tag::focalLengthIn35mmFilm, ValueRule::number),
    exif(71, tag::imageUniqueId, ValueRule::text),
});
// clang-format on

// All GPS fields, in the order of their tags, without labels.
inline constexpr auto gpsRows = [] {
  std::array<DisplayRow, std::size(gpsTags)> rows;
  std::ranges::transform(gpsTags, rows.begin(), [](const TagRow& row) {
    return DisplayRow{noLabel, ValueRule::plain, &row};
  });
  return rows;
}();

// The presence flags of the rows' fields, side by side: most fields of a table are absent from a
// picture, and their rows need not be looked at.
template <size_t count>
consteval std::array<uint16_t, count> flagsOf(const std::array<DisplayRow, count>& rows) {
  std::array<uint16_t, count> flags;
  std::ranges::transform(rows, flags.begin(),
                         [](const DisplayRow& row) { return row.source->flag; });
  return flags;
}
inline constexpr auto imageFlags = flagsOf(imageRows);
inline constexpr auto exifFlags = flagsOf(exifRows);
inline constexpr auto gpsFlags = flagsOf(gpsRows);

}  // namespace display_rows_detail

struct DisplayTable {
  std::span<const DisplayRow> rows;
  std::span<const uint16_t> flags;  // of the same fields
};

inline constexpr DisplayTable imageDisplay{display_rows_detail::imageRows,
                                           display_rows_detail::imageFlags};
inline constexpr DisplayTable exifDisplay{display_rows_detail::exifRows,
                                          display_rows_detail::exifFlags};
inline constexpr DisplayTable gpsDisplay{display_rows_detail::gpsRows,
                                         display_rows_detail::gpsFlags};

}  // namespace exifkeep
