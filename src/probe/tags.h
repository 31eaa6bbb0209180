// SPDX-License-Identifier: MIT
// Tag numbers of Exif 2.2 and TIFF 6.0 by their standard names. For types and fields see
// tag_tables.h.
#pragma once

#include <cstdint>

namespace exifkeep::tag {

// Image directories (TIFF 6.0; Exif 2.2, 4.6.4).
inline constexpr uint16_t imageWidth = 0x0100;
inline constexpr uint16_t imageLength = 0x0101;
inline constexpr uint16_t bitsPerSample = 0x0102;
inline constexpr uint16_t compression = 0x0103;
inline constexpr uint16_t photometricInterpretation = 0x0106;
inline constexpr uint16_t imageDescription = 0x010E;
inline constexpr uint16_t make = 0x010F;
inline constexpr uint16_t model = 0x0110;
inline constexpr uint16_t stripOffsets = 0x0111;
inline constexpr uint16_t orientation = 0x0112;
inline constexpr uint16_t samplesPerPixel = 0x0115;
inline constexpr uint16_t rowsPerStrip = 0x0116;
inline constexpr uint16_t stripByteCounts = 0x0117;
inline constexpr uint16_t xResolution = 0x011A;
inline constexpr uint16_t yResolution = 0x011B;
inline constexpr uint16_t planarConfiguration = 0x011C;
inline constexpr uint16_t resolutionUnit = 0x0128;
inline constexpr uint16_t software = 0x0131;
inline constexpr uint16_t dateTime = 0x0132;
inline constexpr uint16_t artist = 0x013B;
inline constexpr uint16_t whitePoint = 0x013E;
inline constexpr uint16_t primaryChromaticities = 0x013F;
inline constexpr uint16_t yCbCrCoefficients = 0x0211;
inline constexpr uint16_t yCbCrPositioning = 0x0213;
inline constexpr uint16_t referenceBlackWhite = 0x0214;
inline constexpr uint16_t copyright = 0x8298;
inline constexpr uint16_t exifIfdPointer = 0x8769;
inline constexpr uint16_t gpsIfdPointer = 0x8825;
inline constexpr uint16_t jpegInterchangeFormat = 0x0201;
inline constexpr uint16_t jpegInterchangeFormatLength = 0x0202;

// Exif directory (Exif 2.2, 4.6.5).
inline constexpr uint16_t exposureTime = 0x829A;
inline constexpr uint16_t fNumber = 0x829D;
inline constexpr uint16_t exposureProgram = 0x8822;
inline constexpr uint16_t spectralSensitivity = 0x8824;
inline constexpr uint16_t isoSpeedRatings = 0x8827;
inline constexpr uint16_t oecf = 0x8828;
inline constexpr uint16_t exifVersion = 0x9000;
inline constexpr uint16_t dateTimeOriginal = 0x9003;
inline constexpr uint16_t dateTimeDigitized = 0x9004;
inline constexpr uint16_t componentsConfiguration = 0x9101;
inline constexpr uint16_t compressedBitsPerPixel = 0x9102;
inline constexpr uint16_t shutterSpeedValue = 0x9201;
inline constexpr uint16_t apertureValue = 0x9202;
inline constexpr uint16_t brightnessValue = 0x9203;
inline constexpr uint16_t exposureBiasValue = 0x9204;
inline constexpr uint16_t maxApertureValue = 0x9205;
inline constexpr uint16_t subjectDistance = 0x9206;
inline constexpr uint16_t meteringMode = 0x9207;
inline constexpr uint16_t lightSource = 0x9208;
inline constexpr uint16_t flash = 0x9209;
inline constexpr uint16_t focalLength = 0x920A;
inline constexpr uint16_t subjectArea = 0x9214;
inline constexpr uint16_t makerNote = 0x927C;
inline constexpr uint16_t userComment = 0x9286;
inline constexpr uint16_t subSecTime = 0x9290;
inline constexpr uint16_t subSecTimeOriginal = 0x9291;
inline constexpr uint16_t subSecTimeDigitized = 0x9292;
inline constexpr uint16_t flashpixVersion = 0xA000;
inline constexpr uint16_t colorSpace = 0xA001;
inline constexpr uint16_t pixelXDimension = 0xA002;
inline constexpr uint16_t pixelYDimension = 0xA003;
inline constexpr uint16_t relatedSoundFile = 0xA004;
inline constexpr uint16_t interoperabilityIfdPointer = 0xA005;
inline constexpr uint16_t flashEnergy = 0xA20B;
inline constexpr uint16_t focalPlaneXResolution = 0xA20E;
inline constexpr uint16_t focalPlaneYResolution = 0xA20F;
inline constexpr uint16_t focalPlaneResolutionUnit = 0xA210;
inline constexpr uint16_t subjectLocation = 0xA214;
inline constexpr uint16_t exposureIndex = 0xA215;
inline constexpr uint16_t sensingMethod = 0xA217;
inline constexpr uint16_t fileSource = 0xA300;
inline constexpr uint16_t sceneType = 0xA301;
inline constexpr uint16_t customRendered = 0xA401;
inline constexpr uint16_t exposureMode = 0xA402;
inline constexpr uint16_t whiteBalance = 0xA403;
inline constexpr uint16_t digitalZoomRatio = 0xA404;
inline constexpr uint16_t focalLengthIn35mmFilm = 0xA405;
inline constexpr uint16_t sceneCaptureType = 0xA406;
inline constexpr uint16_t gainControl = 0xA407;
inline constexpr uint16_t contrast = 0xA408;
inline constexpr uint16_t saturation = 0xA409;
inline constexpr uint16_t sharpness = 0xA40A;
inline constexpr uint16_t subjectDistanceRange = 0xA40C;
inline constexpr uint16_t imageUniqueId = 0xA420;

// GPS directory (Exif 2.2, 4.6.6).
inline constexpr uint16_t gpsVersionId = 0x0000;
inline constexpr uint16_t gpsLatitudeRef = 0x0001;
inline constexpr uint16_t gpsLatitude = 0x0002;
inline constexpr uint16_t gpsLongitudeRef = 0x0003;
inline constexpr uint16_t gpsLongitude = 0x0004;
inline constexpr uint16_t gpsAltitudeRef = 0x0005;
inline constexpr uint16_t gpsAltitude = 0x0006;
inline constexpr uint16_t gpsTimeStamp = 0x0007;
inline constexpr uint16_t gpsSatellites = 0x0008;
inline constexpr uint16_t gpsStatus = 0x0009;
inline constexpr uint16_t gpsMeasureMode = 0x000A;
inline constexpr uint16_t gpsDop = 0x000B;
inline constexpr uint16_t gpsSpeedRef = 0x000C;
inline constexpr uint16_t gpsSpeed = 0x000D;
inline constexpr uint16_t gpsTrackRef = 0x000E;
inline constexpr uint16_t gpsTrack = 0x000F;
inline constexpr uint16_t gpsImgDirectionRef = 0x0010;
inline constexpr uint16_t gpsImgDirection = 0x0011;
inline constexpr uint16_t gpsMapDatum = 0x0012;
inline constexpr uint16_t gpsDestLatitudeRef = 0x0013;
inline constexpr uint16_t gpsDestLatitude = 0x0014;
inline constexpr uint16_t gpsDestLongitudeRef = 0x0015;
inline constexpr uint16_t gpsDestLongitude = 0x0016;
inline constexpr uint16_t gpsDestBearingRef = 0x0017;
inline constexpr uint16_t gpsDestBearing = 0x0018;
inline constexpr uint16_t gpsDestDistanceRef = 0x0019;
inline constexpr uint16_t gpsDestDistance = 0x001A;
inline constexpr uint16_t gpsProcessingMethod = 0x001B;
inline constexpr uint16_t gpsAreaInformation = 0x001C;
inline constexpr uint16_t gpsDateStamp = 0x001D;
inline constexpr uint16_t gpsDifferential = 0x001E;

// Interoperability directory (Exif 2.2, 4.6.7).
inline constexpr uint16_t interoperabilityIndex = 0x0001;
inline constexpr uint16_t interoperabilityVersion = 0x0002;

}  // namespace exifkeep::tag
