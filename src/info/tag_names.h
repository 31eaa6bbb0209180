// The names that the standard gives to the tags that are listed (Exif 2.2, 4.6.4 to 4.6.6).
#pragma once

#include <span>

#include "info/display_rows.h"

namespace exifkeep {

struct TagName {
  uint16_t tag;
  const char* name;
};

// clang-format off
inline constexpr TagName imageTagNames[] = {
    {tag::imageDescription, "ImageDescription"},
    {tag::artist, "Artist"},
    {tag::copyright, "Copyright"},
    {tag::make, "Make"},
    {tag::model, "Model"},
    {tag::orientation, "Orientation"},
    {tag::xResolution, "XResolution"},
    {tag::yResolution, "YResolution"},
    {tag::resolutionUnit, "ResolutionUnit"},
    {tag::software, "Software"},
    {tag::dateTime, "DateTime"},
    {tag::yCbCrPositioning, "YCbCrPositioning"},
    {tag::imageWidth, "ImageWidth"},
    {tag::imageLength, "ImageLength"},
};

inline constexpr TagName exifTagNames[] = {
    {tag::exposureTime, "ExposureTime"},
    {tag::fNumber, "FNumber"},
    {tag::exposureProgram, "ExposureProgram"},
    {tag::isoSpeedRatings, "ISOSpeedRatings"},
    {tag::exifVersion, "ExifVersion"},
    {tag::dateTimeOriginal, "DateTimeOriginal"},
    {tag::dateTimeDigitized, "DateTimeDigitized"},
    {tag::componentsConfiguration, "ComponentsConfiguration"},
    {tag::compressedBitsPerPixel, "CompressedBitsPerPixel"},
    {tag::shutterSpeedValue, "ShutterSpeedValue"},
    {tag::apertureValue, "ApertureValue"},
    {tag::exposureBiasValue, "ExposureBiasValue"},
    {tag::maxApertureValue, "MaxApertureValue"},
    {tag::meteringMode, "MeteringMode"},
    {tag::lightSource, "LightSource"},
    {tag::flash, "Flash"},
    {tag::focalLength, "FocalLength"},
    {tag::makerNote, "MakerNote"},
    {tag::userComment, "UserComment"},
    {tag::flashpixVersion, "FlashpixVersion"},
    {tag::colorSpace, "ColorSpace"},
    {tag::pixelXDimension, "PixelXDimension"},
    {tag::pixelYDimension, "PixelYDimension"},
    {tag::focalPlaneXResolution, "FocalPlaneXResolution"},
    {tag::focalPlaneYResolution, "FocalPlaneYResolution"},
    {tag::focalPlaneResolutionUnit, "FocalPlaneResolutionUnit"},
    {tag::sensingMethod, "SensingMethod"},
    {tag::fileSource, "FileSource"},
    {tag::sceneType, "SceneType"},
    {tag::relatedSoundFile, "RelatedSoundFile"},
    {tag::subSecTime, "SubSecTime"},
    {tag::subSecTimeDigitized, "SubSecTimeDigitized"},
    {tag::subSecTimeOriginal, "SubSecTimeOriginal"},
    {tag::flashEnergy, "FlashEnergy"},
    {tag::brightnessValue, "BrightnessValue"},
    {tag::sharpness, "Sharpness"},
    {tag::saturation, "Saturation"},
    {tag::contrast, "Contrast"},
    {tag::gainControl, "GainControl"},
    {tag::sceneCaptureType, "SceneCaptureType"},
    {tag::digitalZoomRatio, "DigitalZoomRatio"},
    {tag::whiteBalance, "WhiteBalance"},
    {tag::exposureMode, "ExposureMode"},
    {tag::customRendered, "CustomRendered"},
    {tag::exposureIndex, "ExposureIndex"},
    {tag::focalLengthIn35mmFilm, "FocalLengthIn35mmFilm"},
    {tag::imageUniqueId, "ImageUniqueID"},
};

inline constexpr TagName gpsTagNames[] = {
    {tag::gpsVersionId, "GPSVersionID"},
    {tag::gpsLatitudeRef, "GPSLatitudeRef"},
    {tag::gpsLatitude, "GPSLatitude"},
    {tag::gpsLongitudeRef, "GPSLongitudeRef"},
    {tag::gpsLongitude, "GPSLongitude"},
    {tag::gpsAltitudeRef, "GPSAltitudeRef"},
    {tag::gpsAltitude, "GPSAltitude"},
    {tag::gpsTimeStamp, "GPSTimeStamp"},
    {tag::gpsSatellites, "GPSSatellites"},
    {tag::gpsStatus, "GPSStatus"},
    {tag::gpsMeasureMode, "GPSMeasureMode"},
    {tag::gpsDop, "GPSDOP"},
    {tag::gpsSpeedRef, "GPSSpeedRef"},
    {tag::gpsSpeed, "GPSSpeed"},
    {tag::gpsTrackRef, "GPSTrackRef"},
    {tag::gpsTrack, "GPSTrack"},
    {tag::gpsImgDirectionRef, "GPSImgDirectionRef"},
    {tag::gpsImgDirection, "GPSImgDirection"},
    {tag::gpsMapDatum, "GPSMapDatum"},
    {tag::gpsDestLatitudeRef, "GPSDestLatitudeRef"},
    {tag::gpsDestLatitude, "GPSDestLatitude"},
    {tag::gpsDestLongitudeRef, "GPSDestLongitudeRef"},
    {tag::gpsDestLongitude, "GPSDestLongitude"},
    {tag::gpsDestBearingRef, "GPSDestBearingRef"},
    {tag::gpsDestBearing, "GPSDestBearing"},
    {tag::gpsDestDistanceRef, "GPSDestDistanceRef"},
    {tag::gpsDestDistance, "GPSDestDistance"},
    {tag::gpsProcessingMethod, "GPSProcessingMethod"},
    {tag::gpsAreaInformation, "GPSAreaInformation"},
    {tag::gpsDateStamp, "GPSDateStamp"},
    {tag::gpsDifferential, "GPSDifferential"},
};
// clang-format on

// Null for a tag that is not listed.
constexpr const char* findTagName(std::span<const TagName> names, uint16_t tag) {
  for (const TagName& row : names)
    if (row.tag == tag) return row.name;
  return nullptr;
}

}  // namespace exifkeep
