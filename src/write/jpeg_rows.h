// What the directories of a written JPEG segment hold, in their order. The order is fixed and not
// ascending by tag: intended, the files of this library have always looked so and readers do not
// mind. Intended as well: values that would fit in their entry go out of line, GPS references are
// UNDEFINED, and Artist, the strip and photometric fields, ComponentsConfiguration,
// GPSDestLatitudeRef and GPSDestLongitude are not carried over.
#pragma once

#include "write/output_rows.h"

namespace exifkeep {

// clang-format off

// IFD0 of a picture that keeps its source's metadata.
inline constexpr OutputRow primaryRows[] = {
    Image::copy(tag::make),
    Image::copy(tag::model),
    Image::copy(tag::imageDescription),
    Image::copy(tag::copyright),
    Image::copy(tag::imageWidth),
    Image::copy(tag::imageLength),
    Image::copy(tag::bitsPerSample),
    Image::copy(tag::compression),
    Image::resolution(tag::xResolution),
    Image::resolution(tag::yResolution),
    Image::copy(tag::resolutionUnit),
    Image::copy(tag::software),
    Image::copy(tag::whitePoint),
    Image::copy(tag::primaryChromaticities),
    Image::copy(tag::referenceBlackWhite),
    Image::copy(tag::orientation),
    Image::now(tag::dateTime),
    Image::copy(tag::yCbCrCoefficients),
    Image::copy(tag::yCbCrPositioning),
    Image::pointerIfPresent(tag::exifIfdPointer),
    Image::pointerIfPresent(tag::gpsIfdPointer),
};

inline constexpr OutputRow exifRows[] = {
    Exif::copy(tag::exifVersion),
    Exif::copy(tag::dateTimeOriginal),
    Exif::copy(tag::dateTimeDigitized),
    Exif::copy(tag::shutterSpeedValue),
    Exif::copy(tag::apertureValue),
    Exif::copy(tag::brightnessValue),
    Exif::copy(tag::exposureBiasValue),
    Exif::copy(tag::maxApertureValue),
    Exif::copy(tag::subjectDistance),
    Exif::copy(tag::meteringMode),
    Exif::copy(tag::lightSource),
    Exif::copy(tag::flash),
    Exif::copy(tag::focalLength),
    Exif::copy(tag::exposureTime),
    Exif::copy(tag::fNumber),
    Exif::copy(tag::compressedBitsPerPixel),
    Exif::copy(tag::makerNote),
    Exif::copy(tag::userComment),
    Exif::copy(tag::flashpixVersion),
    Exif::copy(tag::colorSpace),
    Exif::copy(tag::pixelXDimension),
    Exif::copy(tag::pixelYDimension),
    Exif::copy(tag::relatedSoundFile),
    Exif::copy(tag::subjectLocation),
    Exif::copy(tag::fileSource),
    Exif::copy(tag::subjectDistanceRange),
    Exif::copy(tag::sharpness),
    Exif::copy(tag::saturation),
    Exif::copy(tag::contrast),
    Exif::copy(tag::gainControl),
    Exif::copy(tag::sceneCaptureType),
    Exif::copy(tag::digitalZoomRatio),
    Exif::copy(tag::whiteBalance),
    Exif::copy(tag::exposureMode),
    Exif::copy(tag::customRendered),
    Exif::copy(tag::subjectArea),
    Exif::copy(tag::exposureProgram),
    Exif::copy(tag::spectralSensitivity),
    Exif::copy(tag::isoSpeedRatings),
    Exif::as(TiffType::ascii, tag::oecf),
    Exif::copy(tag::subSecTime),
    Exif::copy(tag::subSecTimeDigitized),
    Exif::copy(tag::subSecTimeOriginal),
    Exif::copy(tag::flashEnergy),
    Exif::copy(tag::focalPlaneXResolution),
    Exif::copy(tag::focalPlaneYResolution),
    Exif::copy(tag::focalPlaneResolutionUnit),
    Exif::copy(tag::exposureIndex),
    Exif::copy(tag::sceneType),
    Exif::copy(tag::focalLengthIn35mmFilm),
    Exif::copy(tag::imageUniqueId),
    Exif::copy(tag::sensingMethod),
    Exif::pointerIf(offsetof(ExifIfdRecord, isR98Interoperability), tag::interoperabilityIfdPointer),
};

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

// IFD1, from the record of the source's thumbnail: Compression, sizes and resolution go along as they
// were, and describe that thumbnail.
inline constexpr OutputRow thumbnailRows[] = {
    Image::copy(tag::make),
    Image::copy(tag::model),
    Image::copy(tag::imageDescription),
    Image::copy(tag::copyright),
    Image::copy(tag::imageWidth),
    Image::copy(tag::imageLength),
    Image::copy(tag::bitsPerSample),
    Image::copy(tag::compression),
    Image::resolution(tag::xResolution),
    Image::resolution(tag::yResolution),
    Image::copy(tag::resolutionUnit),
    Image::copy(tag::software),
    Image::copy(tag::whitePoint),
    Image::copy(tag::primaryChromaticities),
    Image::copy(tag::referenceBlackWhite),
    Image::copy(tag::orientation),
    Image::nowIfPresent(tag::dateTime),
    Image::copy(tag::yCbCrCoefficients),
    Image::copy(tag::yCbCrPositioning),
    Image::pointer(tag::jpegInterchangeFormat),
    Image::pointer(tag::jpegInterchangeFormatLength),
};

// Always the same two (Exif 2.2, 4.6.7).
inline constexpr OutputRow interoperabilityRows[] = {
    Interoperability::fixedBytes(tag::interoperabilityIndex, "R98"),
    Interoperability::fixedBytes(tag::interoperabilityVersion, "0100"),
};

// What the library says of itself in a picture that had no metadata.
namespace defaults {
inline constexpr const char* make = "Orvalle";
inline constexpr const char* model = "Tesslar";
inline constexpr const char* copyright = "Copyright (c) by the author.";
inline constexpr const char* exifVersion = "0210";
inline constexpr const char* flashpixVersion = "0100";
inline constexpr const char* componentsConfiguration = "\1\2\3";  // Y, Cb, Cr, none
}  // namespace defaults

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

inline constexpr OutputRow newExifRows[] = {
    Exif::copy(tag::exposureTime),
    Exif::copy(tag::fNumber),
    Exif::fixedBytes(tag::exifVersion, defaults::exifVersion),
    Exif::textOrNow(tag::dateTimeOriginal),
    Exif::textOrNow(tag::dateTimeDigitized),
    Exif::fixedBytes(tag::componentsConfiguration, defaults::componentsConfiguration),
    Exif::copy(tag::compressedBitsPerPixel),
    Exif::copy(tag::shutterSpeedValue),
    Exif::copy(tag::apertureValue),
    Exif::copy(tag::brightnessValue),
    Exif::copy(tag::exposureBiasValue),
    Exif::copy(tag::maxApertureValue),
    Exif::copy(tag::subjectDistance),
    Exif::copy(tag::meteringMode),
    Exif::copy(tag::lightSource),
    Exif::copy(tag::flash),
    Exif::copy(tag::focalLength),
    Exif::copy(tag::makerNote),
    Exif::copy(tag::userComment),
    Exif::fixedBytes(tag::flashpixVersion, defaults::flashpixVersion),
    Exif::fixedNumber(tag::colorSpace, 1),
    Exif::supplied(tag::pixelXDimension, TiffType::long_, Supplied::pictureWidth),
    Exif::supplied(tag::pixelYDimension, TiffType::long_, Supplied::pictureHeight),
    Exif::copy(tag::relatedSoundFile),
    Exif::copy(tag::subjectLocation),
    Exif::copy(tag::fileSource),
    Exif::pointer(tag::interoperabilityIfdPointer),
};

// IFD1 of a picture without a source; its resolution is the thumbnail's own.
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
