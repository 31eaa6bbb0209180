// SPDX-License-Identifier: MIT
// Directories and groups of rows that JPEG segments and TIFF files have in common. The order is
// fixed and not ascending by tag. Intended: files of this library have always had it, and readers
// accept it. It is also intended that values which would fit in their entry are out of line, that
// GPS references are UNDEFINED, and that Artist, ComponentsConfiguration, GPSDestLatitudeRef and
// GPSDestLongitude are not copied.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "write/output_rows.h"

namespace exifkeep {

namespace row_lists {

template <class Part>
inline constexpr size_t rowCount = 1;
template <size_t n>
inline constexpr size_t rowCount<std::array<OutputRow, n>> = n;

// Concatenates rows and lists of rows.
template <class... Part>
consteval auto joined(const Part&... parts) {
  std::array<OutputRow, (rowCount<Part> + ...)> all = {};
  auto end = all.begin();
  const auto append = [&]<class Rows>(const Rows& rows) {
    if constexpr (rowCount<Rows> == 1)
      *end++ = rows;
    else
      end = std::copy(rows.begin(), rows.end(), end);
  };
  (append(parts), ...);
  return all;
}

}  // namespace row_lists

// Groups of an image directory.
inline constexpr auto describingRows =
    Image::copies(tag::model, tag::imageDescription, tag::copyright, tag::imageWidth,
                  tag::imageLength, tag::bitsPerSample, tag::compression);
inline constexpr auto resolutionRows =
    row_lists::joined(Image::resolution(tag::xResolution), Image::resolution(tag::yResolution),
                      Image::copies(tag::resolutionUnit, tag::software));
inline constexpr auto colourRows = Image::copies(tag::whitePoint, tag::primaryChromaticities,
                                                 tag::referenceBlackWhite, tag::orientation);
inline constexpr auto yCbCrRows = Image::copies(tag::yCbCrCoefficients, tag::yCbCrPositioning);
inline constexpr auto pointerRows = row_lists::joined(Image::pointerIfPresent(tag::exifIfdPointer),
                                                      Image::pointerIfPresent(tag::gpsIfdPointer));

inline constexpr auto captureRows =
    Exif::copies(tag::shutterSpeedValue, tag::apertureValue, tag::brightnessValue,
                 tag::exposureBiasValue, tag::maxApertureValue, tag::subjectDistance,
                 tag::meteringMode, tag::lightSource, tag::flash, tag::focalLength);

inline constexpr auto exifRows = row_lists::joined(
    Exif::copies(tag::exifVersion, tag::dateTimeOriginal, tag::dateTimeDigitized), captureRows,
    Exif::copies(tag::exposureTime, tag::fNumber, tag::compressedBitsPerPixel, tag::makerNote,
                 tag::userComment, tag::flashpixVersion, tag::colorSpace, tag::pixelXDimension,
                 tag::pixelYDimension, tag::relatedSoundFile, tag::subjectLocation, tag::fileSource,
                 tag::subjectDistanceRange, tag::sharpness, tag::saturation, tag::contrast,
                 tag::gainControl, tag::sceneCaptureType, tag::digitalZoomRatio, tag::whiteBalance,
                 tag::exposureMode, tag::customRendered, tag::subjectArea, tag::exposureProgram,
                 tag::spectralSensitivity, tag::isoSpeedRatings),
    Exif::as(TiffType::ascii, tag::oecf),
    Exif::copies(tag::subSecTime, tag::subSecTimeDigitized, tag::subSecTimeOriginal,
                 tag::flashEnergy, tag::focalPlaneXResolution, tag::focalPlaneYResolution,
                 tag::focalPlaneResolutionUnit, tag::exposureIndex, tag::sceneType,
                 tag::focalLengthIn35mmFilm, tag::imageUniqueId, tag::sensingMethod),
    Exif::pointerIf(offsetof(ExifIfdRecord, isR98Interoperability),
                    tag::interoperabilityIfdPointer));

inline constexpr OutputRow gpsRows[] = {
    Gps::as(TiffType::undefined, tag::gpsVersionId),
    Gps::copy(tag::gpsAltitude),
    Gps::reference(tag::gpsAltitudeRef),
    Gps::as(TiffType::ascii, tag::gpsAreaInformation),
    Gps::copy(tag::gpsDateStamp),
    Gps::copy(tag::gpsDestBearing),
    Gps::reference(tag::gpsDestBearingRef),
    Gps::copy(tag::gpsDestDistance),
    Gps::reference(tag::gpsDestDistanceRef),
    Gps::copy(tag::gpsDestLatitude),
    Gps::reference(tag::gpsDestLongitudeRef),
    Gps::copy(tag::gpsDifferential),
    Gps::copy(tag::gpsDop),
    Gps::copy(tag::gpsImgDirection),
    Gps::reference(tag::gpsImgDirectionRef),
    Gps::copy(tag::gpsLatitude),
    Gps::reference(tag::gpsLatitudeRef),
    Gps::copy(tag::gpsLongitude),
    Gps::reference(tag::gpsLongitudeRef),
    Gps::copy(tag::gpsMapDatum),
    Gps::reference(tag::gpsMeasureMode),
    Gps::as(TiffType::ascii, tag::gpsProcessingMethod),
    Gps::copy(tag::gpsSatellites),
    Gps::copy(tag::gpsSpeed),
    Gps::reference(tag::gpsSpeedRef),
    Gps::reference(tag::gpsStatus),
    Gps::copy(tag::gpsTimeStamp),
    Gps::copy(tag::gpsTrack),
    Gps::reference(tag::gpsTrackRef),
};

// Always the same two (Exif 2.2, 4.6.7).
inline constexpr OutputRow interoperabilityRows[] = {
    Interoperability::fixedBytes(tag::interoperabilityIndex, "R98"),
    Interoperability::fixedBytes(tag::interoperabilityVersion, "0100"),
};

// What the library writes into a picture that had no metadata.
namespace defaults {
inline constexpr const char* make = "Orvalle";
inline constexpr const char* model = "Tesslar";
inline constexpr const char* copyright = "Copyright (c) by the author.";
inline constexpr const char* exifVersion = "0210";
inline constexpr const char* flashpixVersion = "0100";
inline constexpr const char* componentsConfiguration = "\1\2\3";  // Y, Cb, Cr, none
}  // namespace defaults

}  // namespace exifkeep
