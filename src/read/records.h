// SPDX-License-Identifier: MIT
// The four records that hold all metadata: the directory readers fill them, the info list shows
// them, and the writers copy them into new files. They own no memory. A field is valid only if its
// flag (`hasMake` for `make`) is 1. In a record set to `{}` everything is absent; the reset
// functions also set the defaults of Exif 2.2 and TIFF 6.0.
#pragma once

#include <cstdint>
#include <type_traits>

namespace exifkeep {

struct Rational {
  uint32_t numerator;
  uint32_t denominator;
};

struct SRational {
  int32_t numerator;
  int32_t denominator;
};

// An image directory: IFD0 (`primary`) or IFD1 (`thumbnail`). The 256-byte texts have at most 255
// bytes and are always NUL-terminated.
struct ImageIfdRecord {
  char make[256];
  char model[256];
  char imageDescription[256];
  char copyright[256];
  uint32_t imageWidth;
  uint32_t imageLength;
  uint16_t bitsPerSample[3];  // always three: this library deals with RGB and YCbCr pictures
  uint16_t compression;
  Rational xResolution;
  Rational yResolution;
  uint16_t resolutionUnit;
  char software[256];
  char artist[256];
  uint32_t gpsIfdPointer;   // relative to the TIFF header
  uint32_t exifIfdPointer;  // relative to the TIFF header
  uint32_t photometricInterpretation;
  Rational whitePoint[2];
  Rational primaryChromaticities[6];
  Rational referenceBlackWhite[6];
  uint16_t yCbCrPositioning;
  uint16_t orientation;
  Rational yCbCrCoefficients[3];
  char dateTime[20];      // YYYY:MM:DD HH:MM:SS
  uint32_t stripOffsets;  // the value field: a single offset, or the position of a list of them
  uint32_t rowsPerStrip;
  uint32_t stripByteCounts;  // the value field, likewise
  uint16_t planarConfiguration;
  uint16_t samplesPerPixel;

  uint32_t hasSamplesPerPixel, hasPlanarConfiguration, hasStripByteCounts, hasRowsPerStrip,
      hasStripOffsets, hasDateTime, hasYCbCrCoefficients, hasOrientation, hasYCbCrPositioning,
      hasMake, hasModel, hasImageDescription, hasCopyright, hasImageWidth, hasImageLength,
      hasBitsPerSample, hasCompression, hasXResolution, hasYResolution, hasResolutionUnit,
      hasSoftware, hasArtist, hasGpsIfdPointer, hasExifIfdPointer, hasPhotometricInterpretation,
      hasWhitePoint, hasPrimaryChromaticities, hasReferenceBlackWhite;
};

// The Exif directory (Exif 2.2, 4.6.5) and the fields kept from the interoperability directory.
struct ExifIfdRecord {
  char exifVersion[5];  // four digits, "0220"
  char dateTimeOriginal[20];
  char dateTimeDigitized[20];
  SRational shutterSpeedValue;  // APEX
  Rational apertureValue;       // APEX
  SRational brightnessValue;    // APEX
  SRational exposureBiasValue;  // APEX
  Rational maxApertureValue;    // APEX
  Rational subjectDistance;     // metres
  uint16_t meteringMode;
  uint16_t lightSource;
  uint16_t flash;
  Rational focalLength;   // millimetres
  Rational exposureTime;  // seconds
  Rational fNumber;
  char componentsConfiguration[5];
  Rational compressedBitsPerPixel;
  uint32_t makerNoteLength;
  const uint8_t* makerNote;  // makerNoteLength bytes in the ExifReader's buffer
  char userCommentCode[8];   // no terminator when all eight bytes are used
  uint32_t userCommentLength;
  const uint8_t* userComment;  // the bytes after the code, in the ExifReader's buffer
  uint16_t isoSpeedRatings;
  char flashpixVersion[5];
  uint16_t colorSpace;  // 1 = sRGB, 65535 = uncalibrated
  uint32_t pixelXDimension;
  uint32_t pixelYDimension;
  char relatedSoundFile[15];    // an 8.3 name
  uint16_t subjectLocation[2];  // column, row
  uint8_t fileSource;
  char interoperabilityVersion[5];  // no flag of its own: empty when the file has none
  uint16_t subjectArea[4];          // point, circle or rectangle; values beyond the count are 0
  uint16_t customRendered;
  uint16_t exposureMode;
  uint16_t whiteBalance;
  Rational digitalZoomRatio;
  uint16_t sceneCaptureType;
  uint16_t gainControl;
  uint16_t contrast;
  uint16_t saturation;
  uint16_t sharpness;
  uint16_t subjectDistanceRange;
  uint16_t exposureProgram;
  char spectralSensitivity[34];  // not terminated if all 34 are used
  uint8_t oecf[256];             // at most 255 bytes
  char subSecTime[34];           // as spectralSensitivity
  char subSecTimeOriginal[34];
  char subSecTimeDigitized[34];
  Rational flashEnergy;  // BCPS
  Rational focalPlaneXResolution;
  Rational focalPlaneYResolution;
  uint16_t focalPlaneResolutionUnit;
  Rational exposureIndex;
  uint16_t sensingMethod;
  uint8_t sceneType;
  uint16_t focalLengthIn35mmFilm;
  char imageUniqueId[34];  // as spectralSensitivity

  uint32_t hasImageUniqueId, hasFocalLengthIn35mmFilm, hasSceneType, hasSensingMethod,
      hasExposureIndex, hasSubjectLocation, hasFocalPlaneResolutionUnit, hasFocalPlaneYResolution,
      hasFocalPlaneXResolution, hasFlashEnergy, hasSubSecTimeDigitized, hasSubSecTimeOriginal,
      hasSubSecTime, hasOecf, hasIsoSpeedRatings, hasSpectralSensitivity, hasExposureProgram,
      hasSubjectDistanceRange, hasSharpness, hasSaturation, hasContrast, hasGainControl,
      hasSceneCaptureType, hasDigitalZoomRatio, hasWhiteBalance, hasExposureMode, hasCustomRendered,
      hasSubjectArea, hasExifVersion, hasDateTimeOriginal, hasDateTimeDigitized,
      hasShutterSpeedValue, hasApertureValue, hasBrightnessValue, hasExposureBiasValue,
      hasMaxApertureValue, hasSubjectDistance, hasMeteringMode, hasLightSource, hasFlash,
      hasFocalLength, hasExposureTime, hasFNumber, hasComponentsConfiguration,
      hasCompressedBitsPerPixel, hasMakerNote, hasUserComment, hasFlashpixVersion, hasColorSpace,
      hasPixelXDimension, hasPixelYDimension, hasRelatedSoundFile, hasFileSource,
      isR98Interoperability;
};

// The GPS directory (Exif 2.2, 4.6.6); flags and fields in tag order.
struct GpsIfdRecord {
  uint32_t hasGpsVersionId, hasGpsLatitudeRef, hasGpsLatitude, hasGpsLongitudeRef, hasGpsLongitude,
      hasGpsAltitudeRef, hasGpsAltitude, hasGpsTimeStamp, hasGpsSatellites, hasGpsStatus,
      hasGpsMeasureMode, hasGpsDop, hasGpsSpeedRef, hasGpsSpeed, hasGpsTrackRef, hasGpsTrack,
      hasGpsImgDirectionRef, hasGpsImgDirection, hasGpsMapDatum, hasGpsDestLatitudeRef,
      hasGpsDestLatitude, hasGpsDestLongitudeRef, hasGpsDestLongitude, hasGpsDestBearingRef,
      hasGpsDestBearing, hasGpsDestDistanceRef, hasGpsDestDistance, hasGpsProcessingMethod,
      hasGpsAreaInformation, hasGpsDateStamp, hasGpsDifferential;

  char gpsVersionId[5];  // bytes, not digits
  char gpsLatitudeRef[3];
  Rational gpsLatitude[3];  // degrees, minutes, seconds
  char gpsLongitudeRef[3];
  Rational gpsLongitude[3];
  uint8_t gpsAltitudeRef;    // 1 = below sea level
  Rational gpsAltitude;      // metres
  Rational gpsTimeStamp[3];  // UTC hour, minute, second
  char gpsSatellites[256];
  char gpsStatus[3];
  char gpsMeasureMode[3];
  Rational gpsDop;
  char gpsSpeedRef[3];
  Rational gpsSpeed;
  char gpsTrackRef[3];
  Rational gpsTrack;
  char gpsImgDirectionRef[3];
  Rational gpsImgDirection;
  char gpsMapDatum[256];
  char gpsDestLatitudeRef[3];
  Rational gpsDestLatitude[3];
  char gpsDestLongitudeRef[3];
  Rational gpsDestLongitude[3];
  char gpsDestBearingRef[3];
  Rational gpsDestBearing;
  char gpsDestDistanceRef[3];
  Rational gpsDestDistance;
  uint8_t gpsProcessingMethod[256];
  uint8_t gpsAreaInformation[256];
  char gpsDateStamp[11];  // YYYY:MM:DD, UTC; not terminated if all 11 are used
  uint16_t gpsDifferential;
};

// The metadata of one file.
struct ExifMetadata {
  ExifIfdRecord exif;
  ImageIfdRecord primary;
  GpsIfdRecord gps;
  ImageIfdRecord thumbnail;
};

static_assert(std::is_trivially_copyable_v<ExifMetadata> &&
              std::is_standard_layout_v<ExifMetadata>);

class ExifReader;

// Set every field to its default and clear all flags. The default of ReferenceBlackWhite depends on
// the reader's kind of file. Resetting an Exif record frees the reader's two value buffers.
void resetImageIfdRecord(const ExifReader& reader, ImageIfdRecord& record);
void resetExifIfdRecord(ExifReader& reader, ExifIfdRecord& record);
void resetGpsIfdRecord(GpsIfdRecord& record);

}  // namespace exifkeep
