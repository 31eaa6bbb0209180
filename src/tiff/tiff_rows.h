// SPDX-License-Identifier: MIT
// The contents of the directories of a written TIFF file, in order: those of a JPEG segment and the
// fields that describe the strips.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "write/metadata_rows.h"

namespace exifkeep {

namespace row_lists {

template <size_t n>
constexpr size_t indexOf(const std::array<OutputRow, n>& rows, uint16_t tag) {
  for (size_t i = 0; i < n; ++i)
    if (rows[i].tag == tag) return i;
  throw "the list has no row of that tag";
}

// The list with some rows replaced, by tag.
template <size_t n>
constexpr auto replacing(std::array<OutputRow, n> rows, std::initializer_list<OutputRow> own) {
  for (const OutputRow& row : own) rows[indexOf(rows, row.tag)] = row;
  return rows;
}

// The list with a row inserted after that of `tag`.
template <size_t n>
constexpr auto inserting(const std::array<OutputRow, n>& rows, uint16_t tag, OutputRow row) {
  std::array<OutputRow, n + 1> longer = {};
  const auto next = rows.begin() + indexOf(rows, tag) + 1;
  auto at = std::copy(rows.begin(), next, longer.begin());
  *at = row;
  std::copy(next, rows.end(), at + 1);
  return longer;
}

}  // namespace row_lists

// clang-format off

// The strip of a saved picture or thumbnail.
inline constexpr auto stripRows = row_lists::joined(
    Image::pointer(tag::stripOffsets),
    Image::supplied(tag::stripByteCounts, TiffType::long_, Supplied::stripBytes),
    Image::supplied(tag::rowsPerStrip, TiffType::short_, Supplied::rowsPerStrip));

// IFD0 of a picture that keeps its source's metadata. The pixels are RGB whatever the source's were.
inline constexpr auto tiffPrimaryRows = row_lists::joined(
    Image::copies(tag::make, tag::samplesPerPixel, tag::planarConfiguration),
    Image::fixedNumber(tag::photometricInterpretation, 2),
    describingRows,
    resolutionRows,
    colourRows,
    Image::now(tag::dateTime),
    yCbCrRows,
    stripRows,
    pointerRows);

inline constexpr auto tiffExifRows = row_lists::replacing(exifRows, {
    // Intended: TIFF files of this library have always had the two zero bytes for such a note.
    Exif::noteOrZeros(tag::makerNote),
});

// IFD1, from the record of the source's thumbnail.
inline constexpr auto tiffThumbnailRows = row_lists::joined(
    Image::copy(tag::make),
    describingRows,
    resolutionRows,
    Image::fixedNumber(tag::photometricInterpretation, 2),
    stripRows,
    colourRows,
    Image::nowIfPresent(tag::dateTime),
    yCbCrRows);

// IFD0 of a picture without a source, from the directory that the codec wrote.
inline constexpr auto newTiffPrimaryRows = row_lists::joined(
    Image::fixedText(tag::make, defaults::make),
    Image::fixedNumber(tag::photometricInterpretation, 2),
    Image::fixedText(tag::model, defaults::model),
    Image::fixedText(tag::imageDescription, "Exif_TIF"),
    Image::fixedText(tag::copyright, defaults::copyright),
    Image::resolution(tag::xResolution),
    Image::resolution(tag::yResolution),
    Image::fixedNumberIfPresent(tag::resolutionUnit, 2),
    Image::copy(tag::software),
    Image::fixedNumber(tag::orientation, 1),
    Image::now(tag::dateTime),
    Image::fixedNumber(tag::yCbCrPositioning, 2),
    stripRows,
    Image::copies(tag::samplesPerPixel, tag::planarConfiguration, tag::imageWidth, tag::imageLength,
                  tag::bitsPerSample, tag::compression, tag::whitePoint,
                  tag::primaryChromaticities, tag::referenceBlackWhite, tag::yCbCrCoefficients),
    Image::pointer(tag::exifIfdPointer));

inline constexpr auto newTiffExifRows = row_lists::replacing(
    row_lists::inserting(exifRows, tag::dateTimeDigitized,
        Exif::fixedBytes(tag::componentsConfiguration, defaults::componentsConfiguration)), {
    Exif::fixedBytes(tag::exifVersion, defaults::exifVersion),
    Exif::textOrNow(tag::dateTimeOriginal),
    Exif::textOrNow(tag::dateTimeDigitized),
    Exif::fixedBytes(tag::flashpixVersion, defaults::flashpixVersion),
    Exif::fixedNumber(tag::colorSpace, 1),
    Exif::supplied(tag::pixelXDimension, TiffType::long_, Supplied::pictureWidth),
    Exif::supplied(tag::pixelYDimension, TiffType::long_, Supplied::pictureHeight),
    Exif::pointer(tag::interoperabilityIfdPointer),
});

// IFD1 of a picture without a source, from the directory that the codec wrote for the thumbnail.
inline constexpr auto newTiffThumbnailRows = row_lists::joined(
    Image::copy(tag::make),
    describingRows,
    Image::copies(tag::xResolution, tag::yResolution, tag::resolutionUnit, tag::software),
    Image::fixedNumber(tag::photometricInterpretation, 2),
    stripRows,
    colourRows,
    Image::now(tag::dateTime),
    yCbCrRows);

// clang-format on

}  // namespace exifkeep
