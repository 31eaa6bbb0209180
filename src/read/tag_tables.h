// The one place that says what each tag is: its type in the standard, the record field and flag it
// fills, and how its value is fetched from a file. Readers walk with these tables; the writers' row
// lists and the info list look types, sizes and fields up here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "probe/tags.h"
#include "read/records.h"

namespace exifkeep {

// Value types of TIFF 6.0, section 2.
enum class TiffType : uint16_t {
  byte = 1,
  ascii = 2,
  short_ = 3,
  long_ = 4,
  rational = 5,
  undefined = 7,
  srational = 10,
};

// How a value is fetched. The way is the tag's own: neither the entry's type nor its count selects
// it, except where said. "At offset" is where this library's writers put such values whatever their
// size; a text or a list of SHORTs that other writers kept in its entry is found there
// (DirectoryWalk::isInEntry).
enum class Fetch : uint8_t {
  shortValue,        // the first two bytes of the value field, whatever the type
  longValue,         // all four bytes
  shortOrLong,       // by the entry's type: SHORT, else LONG
  rawByte,           // the first byte
  rawText,           // the first `limit` bytes up to a zero byte, terminated
  rationals,         // at offset: `limit` pairs of 32-bit numbers
  shorts,            // at offset: `limit` SHORTs
  bytes,             // at offset: min(count, `limit`) bytes as they are
  text,              // at offset: min(count, `limit`) bytes up to a zero byte, terminated
  shortText,         // as text, but a count above `limit` refuses the entry
  subjectArea,       // at offset: 2, 3 or 4 SHORTs as the count says, none with another count
  makerNote,         // at offset: count bytes into the reader's maker note buffer
  userComment,       // at offset: count bytes, 8 at least, into the reader's comment buffer
  interoperability,  // the interoperability directory
  isR98,             // nothing but the flag, when the value field reads "R98"
  passedOver,        // not read: a save writes it anew
};

inline constexpr uint16_t noField = 0xFFFF;

struct TagRow {
  uint16_t tag;
  TiffType type;
  Fetch fetch;
  uint16_t limit;     // values, or bytes of text
  uint16_t field;     // offset of the field in its record, or noField
  uint16_t capacity;  // bytes of the field
  uint16_t flag;      // offset of the presence flag, or noField
};

// clang-format off
#define VALUE(name, type, fetch, limit, field, flag) \
  TagRow{tag::name, TiffType::type, Fetch::fetch, limit, offsetof(ImageIfdRecord, field), \
         sizeof(ImageIfdRecord::field), offsetof(ImageIfdRecord, flag)}
inline constexpr TagRow imageTags[] = {
    VALUE(imageWidth, long_, shortOrLong, 1, imageWidth, hasImageWidth),
    VALUE(imageLength, long_, shortOrLong, 1, imageLength, hasImageLength),
    VALUE(bitsPerSample, short_, shorts, 3, bitsPerSample, hasBitsPerSample),
    VALUE(compression, short_, shortValue, 1, compression, hasCompression),
    VALUE(photometricInterpretation, short_, shortValue, 1, photometricInterpretation, hasPhotometricInterpretation),
    VALUE(imageDescription, ascii, bytes, 255, imageDescription, hasImageDescription),
    VALUE(make, ascii, bytes, 255, make, hasMake),
    VALUE(model, ascii, bytes, 255, model, hasModel),
    VALUE(stripOffsets, long_, shortOrLong, 1, stripOffsets, hasStripOffsets),
    VALUE(orientation, short_, shortValue, 1, orientation, hasOrientation),
    VALUE(samplesPerPixel, short_, shortValue, 1, samplesPerPixel, hasSamplesPerPixel),
    VALUE(rowsPerStrip, long_, shortOrLong, 1, rowsPerStrip, hasRowsPerStrip),
    VALUE(stripByteCounts, long_, shortOrLong, 1, stripByteCounts, hasStripByteCounts),
    VALUE(xResolution, rational, rationals, 1, xResolution, hasXResolution),
    VALUE(yResolution, rational, rationals, 1, yResolution, hasYResolution),
    VALUE(planarConfiguration, short_, shortValue, 1, planarConfiguration, hasPlanarConfiguration),
    VALUE(resolutionUnit, short_, shortValue, 1, resolutionUnit, hasResolutionUnit),
    VALUE(software, ascii, bytes, 255, software, hasSoftware),
    VALUE(dateTime, ascii, text, 19, dateTime, hasDateTime),
    VALUE(artist, ascii, bytes, 255, artist, hasArtist),
    VALUE(whitePoint, rational, rationals, 2, whitePoint, hasWhitePoint),
    VALUE(primaryChromaticities, rational, rationals, 6, primaryChromaticities, hasPrimaryChromaticities),
    TagRow{tag::jpegInterchangeFormat, TiffType::long_, Fetch::passedOver, 1, noField, 0, noField},
    TagRow{tag::jpegInterchangeFormatLength, TiffType::long_, Fetch::passedOver, 1, noField, 0, noField},
    VALUE(yCbCrCoefficients, rational, rationals, 3, yCbCrCoefficients, hasYCbCrCoefficients),
    VALUE(yCbCrPositioning, short_, shortValue, 1, yCbCrPositioning, hasYCbCrPositioning),
    VALUE(referenceBlackWhite, rational, rationals, 6, referenceBlackWhite, hasReferenceBlackWhite),
    VALUE(copyright, ascii, bytes, 255, copyright, hasCopyright),
    VALUE(exifIfdPointer, long_, longValue, 1, exifIfdPointer, hasExifIfdPointer),
    VALUE(gpsIfdPointer, long_, longValue, 1, gpsIfdPointer, hasGpsIfdPointer),
};
#undef VALUE

#define VALUE(name, type, fetch, limit, field, flag) \
  TagRow{tag::name, TiffType::type, Fetch::fetch, limit, offsetof(ExifIfdRecord, field), \
         sizeof(ExifIfdRecord::field), offsetof(ExifIfdRecord, flag)}
inline constexpr TagRow exifTags[] = {
    VALUE(exposureTime, rational, rationals, 1, exposureTime, hasExposureTime),
    VALUE(fNumber, rational, rationals, 1, fNumber, hasFNumber),
    VALUE(exposureProgram, short_, shortValue, 1, exposureProgram, hasExposureProgram),
    VALUE(spectralSensitivity, ascii, bytes, 34, spectralSensitivity, hasSpectralSensitivity),
    VALUE(isoSpeedRatings, short_, shortValue, 1, isoSpeedRatings, hasIsoSpeedRatings),
    VALUE(oecf, undefined, bytes, 255, oecf, hasOecf),
    VALUE(exifVersion, undefined, rawText, 4, exifVersion, hasExifVersion),
    VALUE(dateTimeOriginal, ascii, text, 19, dateTimeOriginal, hasDateTimeOriginal),
    VALUE(dateTimeDigitized, ascii, text, 19, dateTimeDigitized, hasDateTimeDigitized),
    VALUE(componentsConfiguration, undefined, rawText, 4, componentsConfiguration, hasComponentsConfiguration),
    VALUE(compressedBitsPerPixel, rational, rationals, 1, compressedBitsPerPixel, hasCompressedBitsPerPixel),
    VALUE(shutterSpeedValue, srational, rationals, 1, shutterSpeedValue, hasShutterSpeedValue),
    VALUE(apertureValue, rational, rationals, 1, apertureValue, hasApertureValue),
    VALUE(brightnessValue, srational, rationals, 1, brightnessValue, hasBrightnessValue),
    VALUE(exposureBiasValue, srational, rationals, 1, exposureBiasValue, hasExposureBiasValue),
    VALUE(maxApertureValue, rational, rationals, 1, maxApertureValue, hasMaxApertureValue),
    VALUE(subjectDistance, rational, rationals, 1, subjectDistance, hasSubjectDistance),
    VALUE(meteringMode, short_, shortValue, 1, meteringMode, hasMeteringMode),
    VALUE(lightSource, short_, shortValue, 1, lightSource, hasLightSource),
    VALUE(flash, short_, shortValue, 1, flash, hasFlash),
    VALUE(focalLength, rational, rationals, 1, focalLength, hasFocalLength),
    VALUE(subjectArea, short_, subjectArea, 4, subjectArea, hasSubjectArea),
    VALUE(makerNote, undefined, makerNote, 0, makerNote, hasMakerNote),
    VALUE(userComment, undefined, userComment, 8, userCommentCode, hasUserComment),
    VALUE(subSecTime, ascii, bytes, 34, subSecTime, hasSubSecTime),
    VALUE(subSecTimeOriginal, ascii, bytes, 34, subSecTimeOriginal, hasSubSecTimeOriginal),
    VALUE(subSecTimeDigitized, ascii, bytes, 34, subSecTimeDigitized, hasSubSecTimeDigitized),
    VALUE(flashpixVersion, undefined, rawText, 4, flashpixVersion, hasFlashpixVersion),
    VALUE(colorSpace, short_, shortValue, 1, colorSpace, hasColorSpace),
    VALUE(pixelXDimension, long_, shortOrLong, 1, pixelXDimension, hasPixelXDimension),
    VALUE(pixelYDimension, long_, shortOrLong, 1, pixelYDimension, hasPixelYDimension),
    VALUE(relatedSoundFile, ascii, shortText, 14, relatedSoundFile, hasRelatedSoundFile),
    TagRow{tag::interoperabilityIfdPointer, TiffType::long_, Fetch::interoperability, 1, noField, 0, noField},
    VALUE(flashEnergy, rational, rationals, 1, flashEnergy, hasFlashEnergy),
    VALUE(focalPlaneXResolution, rational, rationals, 1, focalPlaneXResolution, hasFocalPlaneXResolution),
    VALUE(focalPlaneYResolution, rational, rationals, 1, focalPlaneYResolution, hasFocalPlaneYResolution),
    VALUE(focalPlaneResolutionUnit, short_, shortValue, 1, focalPlaneResolutionUnit, hasFocalPlaneResolutionUnit),
    VALUE(subjectLocation, short_, shorts, 2, subjectLocation, hasSubjectLocation),
    VALUE(exposureIndex, rational, rationals, 1, exposureIndex, hasExposureIndex),
    VALUE(sensingMethod, short_, shortValue, 1, sensingMethod, hasSensingMethod),
    VALUE(fileSource, undefined, rawByte, 1, fileSource, hasFileSource),
    VALUE(sceneType, undefined, rawByte, 1, sceneType, hasSceneType),
    VALUE(customRendered, short_, shortValue, 1, customRendered, hasCustomRendered),
    VALUE(exposureMode, short_, shortValue, 1, exposureMode, hasExposureMode),
    VALUE(whiteBalance, short_, shortValue, 1, whiteBalance, hasWhiteBalance),
    VALUE(digitalZoomRatio, rational, rationals, 1, digitalZoomRatio, hasDigitalZoomRatio),
    VALUE(focalLengthIn35mmFilm, short_, shortValue, 1, focalLengthIn35mmFilm, hasFocalLengthIn35mmFilm),
    VALUE(sceneCaptureType, short_, shortValue, 1, sceneCaptureType, hasSceneCaptureType),
    VALUE(gainControl, short_, shortValue, 1, gainControl, hasGainControl),
    VALUE(contrast, short_, shortValue, 1, contrast, hasContrast),
    VALUE(saturation, short_, shortValue, 1, saturation, hasSaturation),
    VALUE(sharpness, short_, shortValue, 1, sharpness, hasSharpness),
    VALUE(subjectDistanceRange, short_, shortValue, 1, subjectDistanceRange, hasSubjectDistanceRange),
    VALUE(imageUniqueId, ascii, bytes, 34, imageUniqueId, hasImageUniqueId),
};
#undef VALUE

#define VALUE(name, type, fetch, limit, field, flag) \
  TagRow{tag::name, TiffType::type, Fetch::fetch, limit, offsetof(GpsIfdRecord, field), \
         sizeof(GpsIfdRecord::field), offsetof(GpsIfdRecord, flag)}
inline constexpr TagRow gpsTags[] = {
    VALUE(gpsVersionId, byte, rawText, 4, gpsVersionId, hasGpsVersionId),
    VALUE(gpsLatitudeRef, ascii, rawText, 2, gpsLatitudeRef, hasGpsLatitudeRef),
    VALUE(gpsLatitude, rational, rationals, 3, gpsLatitude, hasGpsLatitude),
    VALUE(gpsLongitudeRef, ascii, rawText, 2, gpsLongitudeRef, hasGpsLongitudeRef),
    VALUE(gpsLongitude, rational, rationals, 3, gpsLongitude, hasGpsLongitude),
    VALUE(gpsAltitudeRef, byte, rawByte, 1, gpsAltitudeRef, hasGpsAltitudeRef),
    VALUE(gpsAltitude, rational, rationals, 1, gpsAltitude, hasGpsAltitude),
    VALUE(gpsTimeStamp, rational, rationals, 3, gpsTimeStamp, hasGpsTimeStamp),
    VALUE(gpsSatellites, ascii, bytes, 255, gpsSatellites, hasGpsSatellites),
    VALUE(gpsStatus, ascii, rawText, 2, gpsStatus, hasGpsStatus),
    VALUE(gpsMeasureMode, ascii, rawText, 2, gpsMeasureMode, hasGpsMeasureMode),
    VALUE(gpsDop, rational, rationals, 1, gpsDop, hasGpsDop),
    VALUE(gpsSpeedRef, ascii, rawText, 2, gpsSpeedRef, hasGpsSpeedRef),
    VALUE(gpsSpeed, rational, rationals, 1, gpsSpeed, hasGpsSpeed),
    VALUE(gpsTrackRef, ascii, rawText, 2, gpsTrackRef, hasGpsTrackRef),
    VALUE(gpsTrack, rational, rationals, 1, gpsTrack, hasGpsTrack),
    VALUE(gpsImgDirectionRef, ascii, rawText, 2, gpsImgDirectionRef, hasGpsImgDirectionRef),
    VALUE(gpsImgDirection, rational, rationals, 1, gpsImgDirection, hasGpsImgDirection),
    VALUE(gpsMapDatum, ascii, bytes, 255, gpsMapDatum, hasGpsMapDatum),
    VALUE(gpsDestLatitudeRef, ascii, rawText, 2, gpsDestLatitudeRef, hasGpsDestLatitudeRef),
    VALUE(gpsDestLatitude, rational, rationals, 3, gpsDestLatitude, hasGpsDestLatitude),
    VALUE(gpsDestLongitudeRef, ascii, rawText, 2, gpsDestLongitudeRef, hasGpsDestLongitudeRef),
    VALUE(gpsDestLongitude, rational, rationals, 3, gpsDestLongitude, hasGpsDestLongitude),
    VALUE(gpsDestBearingRef, ascii, rawText, 2, gpsDestBearingRef, hasGpsDestBearingRef),
    VALUE(gpsDestBearing, rational, rationals, 1, gpsDestBearing, hasGpsDestBearing),
    VALUE(gpsDestDistanceRef, ascii, rawText, 2, gpsDestDistanceRef, hasGpsDestDistanceRef),
    VALUE(gpsDestDistance, rational, rationals, 1, gpsDestDistance, hasGpsDestDistance),
    VALUE(gpsProcessingMethod, undefined, bytes, 255, gpsProcessingMethod, hasGpsProcessingMethod),
    VALUE(gpsAreaInformation, undefined, bytes, 255, gpsAreaInformation, hasGpsAreaInformation),
    VALUE(gpsDateStamp, ascii, bytes, 11, gpsDateStamp, hasGpsDateStamp),
    VALUE(gpsDifferential, short_, shortValue, 1, gpsDifferential, hasGpsDifferential),
};
#undef VALUE

// Fills the Exif record: the interoperability directory has no record of its own.
inline constexpr TagRow interoperabilityTags[] = {
    TagRow{tag::interoperabilityIndex, TiffType::ascii, Fetch::isR98, 4, noField, 0, offsetof(ExifIfdRecord, isR98Interoperability)},
    TagRow{tag::interoperabilityVersion, TiffType::undefined, Fetch::rawText, 4, offsetof(ExifIfdRecord, interoperabilityVersion), sizeof(ExifIfdRecord::interoperabilityVersion), noField},
};

// clang-format on

using TagTable = std::span<const TagRow>;

// A table and the way to a tag's row in one step: a multiplier, found when this is compiled, sends
// every tag of the table to a slot of its own. (A search's comparisons cannot be predicted, and
// mistaking them costs more than the rest of decoding an entry.)
class TagIndex {
 public:
  consteval explicit TagIndex(TagTable rows) : rows_(rows) {
    while (!everyTagHasItsSlot()) multiplier_ += 2;
  }
  // The row of `tag`, or null.
  const TagRow* find(uint16_t tag) const {
    const TagRow& row = rows_[slots_[slotOf(tag)]];
    return row.tag == tag ? &row : nullptr;
  }

 private:
  constexpr uint8_t slotOf(uint16_t tag) const { return (tag * multiplier_ & 0xFFFF) >> 8; }
  constexpr bool everyTagHasItsSlot() {
    slots_ = {};
    bool taken[256] = {};
    for (size_t i = 0; i < rows_.size(); ++i) {
      const uint8_t slot = slotOf(rows_[i].tag);
      if (taken[slot]) return false;
      taken[slot] = true;
      slots_[slot] = static_cast<uint8_t>(i);
    }
    return true;
  }

  TagTable rows_;
  uint32_t multiplier_ = 1;
  std::array<uint8_t, 256> slots_ = {};  // the first row where no tag has its slot
};

inline constexpr TagIndex imageIndex(imageTags);
inline constexpr TagIndex exifIndex(exifTags);
inline constexpr TagIndex gpsIndex(gpsTags);
inline constexpr TagIndex interoperabilityIndex(interoperabilityTags);

// The row of a tag that the table has; any other tag ends the compilation.
constexpr const TagRow& knownTag(TagTable table, uint16_t tag) {
  for (const TagRow& row : table)
    if (row.tag == tag) return row;
  throw "the table has no row of that tag";
}

namespace tag_tables_check {

// Bytes that the fetch may store, terminator included.
constexpr size_t bytesStored(const TagRow& row) {
  switch (row.fetch) {
    case Fetch::rationals: return row.limit * sizeof(Rational);
    case Fetch::shorts:
    case Fetch::subjectArea: return row.limit * sizeof(uint16_t);
    case Fetch::rawText:
    case Fetch::text:
    case Fetch::shortText: return row.limit + size_t{1};
    case Fetch::bytes:
    case Fetch::userComment: return row.limit;
    case Fetch::shortValue: return sizeof(uint16_t);
    case Fetch::longValue:
    case Fetch::shortOrLong: return sizeof(uint32_t);
    case Fetch::rawByte: return 1;
    default: return 0;
  }
}

constexpr bool fits(TagTable table) {
  for (const TagRow& row : table)
    if (bytesStored(row) > row.capacity) return false;
  return true;
}

static_assert(fits(imageTags) && fits(exifTags) && fits(gpsTags) && fits(interoperabilityTags));

}  // namespace tag_tables_check

}  // namespace exifkeep
