// SPDX-License-Identifier: MIT
// The contents of the directories of a written JPEG segment, in order. The strip and photometric
// fields are not copied. Intended: they describe pixels stored in another way.
#pragma once

#include "write/metadata_rows.h"

namespace exifkeep {

// IFD0 of a picture that keeps its source's metadata.
inline constexpr auto primaryRows =
    row_lists::joined(Image::copy(tag::make), describingRows, resolutionRows, colourRows,
                      Image::now(tag::dateTime), yCbCrRows, pointerRows);

// IFD1, from the record of the source's thumbnail. Intended: Compression, sizes and resolution are
// copied and describe that thumbnail, not the new one.
inline constexpr auto thumbnailRows = row_lists::joined(
    Image::copy(tag::make), describingRows, resolutionRows, colourRows,
    Image::nowIfPresent(tag::dateTime), yCbCrRows, Image::pointer(tag::jpegInterchangeFormat),
    Image::pointer(tag::jpegInterchangeFormatLength));

// clang-format off

// IFD0 of a picture without a source.
inline constexpr OutputRow newPrimaryRows[] = {
    Image::fixedText(tag::imageDescription, "Exif_JPEG_422"),
    Image::fixedText(tag::make, defaults::make),
    Image::fixedText(tag::model, defaults::model),
    Image::fixedNumber(tag::orientation, 1),
    Image::resolutionOfPicture(tag::xResolution),
    Image::resolutionOfPicture(tag::yResolution),
    Image::fixedNumber(tag::resolutionUnit, 2),
    Image::now(tag::dateTime),
    Image::fixedNumber(tag::yCbCrPositioning, 2),
    Image::fixedText(tag::copyright, defaults::copyright),
    Image::copy(tag::software),
    Image::pointer(tag::exifIfdPointer),
};

inline constexpr auto newExifRows = row_lists::joined(
    Exif::copies(tag::exposureTime, tag::fNumber),
    Exif::fixedBytes(tag::exifVersion, defaults::exifVersion),
    Exif::textOrNow(tag::dateTimeOriginal),
    Exif::textOrNow(tag::dateTimeDigitized),
    Exif::fixedBytes(tag::componentsConfiguration, defaults::componentsConfiguration),
    Exif::copy(tag::compressedBitsPerPixel),
    captureRows,
    Exif::copies(tag::makerNote, tag::userComment),
    Exif::fixedBytes(tag::flashpixVersion, defaults::flashpixVersion),
    Exif::fixedNumber(tag::colorSpace, 1),
    Exif::supplied(tag::pixelXDimension, TiffType::long_, Supplied::pictureWidth),
    Exif::supplied(tag::pixelYDimension, TiffType::long_, Supplied::pictureHeight),
    Exif::copies(tag::relatedSoundFile, tag::subjectLocation, tag::fileSource),
    Exif::pointer(tag::interoperabilityIfdPointer));

// IFD1 of a picture without a source, with the thumbnail's own resolution.
inline constexpr OutputRow newThumbnailRows[] = {
    Image::fixedNumber(tag::compression, 6),
    Image::resolutionOfPicture(tag::xResolution),
    Image::resolutionOfPicture(tag::yResolution),
    Image::fixedNumber(tag::resolutionUnit, 2),
    Image::pointer(tag::jpegInterchangeFormat),
    Image::pointer(tag::jpegInterchangeFormatLength),
    Image::fixedNumber(tag::yCbCrPositioning, 2),
};

// clang-format on

}  // namespace exifkeep
