// SPDX-License-Identifier: MIT
// Defines every tag: its type in the standard, its record field and flag, and how its value is
// fetched from a file. The readers decode directories by these tables; the writers' row lists and
// the info list look up types, sizes and fields here.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "probe/tags.h"
#include "read/records.h"

namespace exifkeep {

// Value types of TIFF 6.0, section 2.
enum class TiffType : uint8_t {
  byte = 1,
  ascii = 2,
  short_ = 3,
  long_ = 4,
  rational = 5,
  undefined = 7,
  srational = 10,
};

// The size of one value by its type; 0 for types that no table uses.
inline constexpr uint8_t unitSizes[] = {0, 1, 1, 2, 4, 8, 0, 1, 0, 0, 8};
constexpr uint32_t unitSize(uint16_t type) {
  return type < std::size(unitSizes) ? unitSizes[type] : 0;
}

// How a value is fetched. This depends on the tag, not on the entry's type or count, unless stated
// otherwise. "At offset" is where this library's writers put such values whatever their size; texts
// and lists of SHORTs that other writers left in the entry are found there too
// (DirectoryWalk::holdsValue).
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
  shortText,         // as text, but an entry with a count above `limit` is rejected
  subjectArea,       // at offset: 2, 3 or 4 SHORTs according to the count, none for other counts
  makerNote,         // at offset: count bytes into the reader's maker note buffer
  userComment,       // at offset: count bytes, 8 at least, into the reader's comment buffer
  interoperability,  // the interoperability directory
  isR98,             // only the flag, if the value field is "R98"
  skipped,           // not read: a save writes it anew
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

struct NamedTag {
  TagRow row;
  const char* name = "";  // in the standard
};

// `make` and `Make` are the field make and its flag hasMake.
consteval bool isFlagOf(std::string_view field, std::string_view flag) {
  return flag.size() == field.size() && flag.substr(1) == field.substr(1) &&
         flag[0] == field[0] - 'a' + 'A';
}

// The standard's name of a tag, from that of its flag: abbreviations are in capitals.
template <size_t size>
struct TagName {
  char text[size];
  consteval TagName(const char (&flag)[size]) {
    std::copy_n(flag, size, text);
    for (const std::string_view abbreviation : {"Gps", "Iso", "Id", "Dop", "Oecf"}) {
      const size_t at = std::string_view(flag).find(abbreviation);
      if (at == std::string_view::npos) continue;
      for (size_t i = at + 1; i < at + abbreviation.size(); ++i)
        text[i] = static_cast<char>(text[i] - 'a' + 'A');
    }
  }
};
template <TagName name>
inline constexpr const char* standardName = name.text;

// clang-format off
// The row of a tag with the same name as its field. The preprocessor needs the flag's name spelled
// out, so the compiler checks that it matches the field.
#define FIELD(field, Flag, type, fetch, limit)                                               \
  {{isFlagOf(#field, #Flag) ? tag::field : throw "this is the flag of another field",        \
    TiffType::type, Fetch::fetch, limit, offsetof(RECORD, field), sizeof(RECORD::field),     \
    offsetof(RECORD, has##Flag)},                                                            \
   standardName<#Flag>}

#define RECORD ImageIfdRecord
inline constexpr NamedTag namedImageTags[] = {
    FIELD(imageWidth, ImageWidth, long_, shortOrLong, 1),
    FIELD(imageLength, ImageLength, long_, shortOrLong, 1),
    FIELD(bitsPerSample, BitsPerSample, short_, shorts, 3),
    FIELD(compression, Compression, short_, shortValue, 1),
    FIELD(photometricInterpretation, PhotometricInterpretation, short_, shortValue, 1),
    FIELD(imageDescription, ImageDescription, ascii, bytes, 255),
    FIELD(make, Make, ascii, bytes, 255),
    FIELD(model, Model, ascii, bytes, 255),
    FIELD(stripOffsets, StripOffsets, long_, shortOrLong, 1),
    FIELD(orientation, Orientation, short_, shortValue, 1),
    FIELD(samplesPerPixel, SamplesPerPixel, short_, shortValue, 1),
    FIELD(rowsPerStrip, RowsPerStrip, long_, shortOrLong, 1),
    FIELD(stripByteCounts, StripByteCounts, long_, shortOrLong, 1),
    FIELD(xResolution, XResolution, rational, rationals, 1),
    FIELD(yResolution, YResolution, rational, rationals, 1),
    FIELD(planarConfiguration, PlanarConfiguration, short_, shortValue, 1),
    FIELD(resolutionUnit, ResolutionUnit, short_, shortValue, 1),
    FIELD(software, Software, ascii, bytes, 255),
    FIELD(dateTime, DateTime, ascii, text, 19),
    FIELD(artist, Artist, ascii, bytes, 255),
    FIELD(whitePoint, WhitePoint, rational, rationals, 2),
    FIELD(primaryChromaticities, PrimaryChromaticities, rational, rationals, 6),
    {{tag::jpegInterchangeFormat, TiffType::long_, Fetch::skipped, 1, noField, 0, noField}},
    {{tag::jpegInterchangeFormatLength, TiffType::long_, Fetch::skipped, 1, noField, 0, noField}},
    FIELD(yCbCrCoefficients, YCbCrCoefficients, rational, rationals, 3),
    FIELD(yCbCrPositioning, YCbCrPositioning, short_, shortValue, 1),
    FIELD(referenceBlackWhite, ReferenceBlackWhite, rational, rationals, 6),
    FIELD(copyright, Copyright, ascii, bytes, 255),
    FIELD(exifIfdPointer, ExifIfdPointer, long_, longValue, 1),
    FIELD(gpsIfdPointer, GpsIfdPointer, long_, longValue, 1),
};
#undef RECORD

#define RECORD ExifIfdRecord
inline constexpr NamedTag namedExifTags[] = {
    FIELD(exposureTime, ExposureTime, rational, rationals, 1),
    FIELD(fNumber, FNumber, rational, rationals, 1),
    FIELD(exposureProgram, ExposureProgram, short_, shortValue, 1),
    FIELD(spectralSensitivity, SpectralSensitivity, ascii, bytes, 34),
    FIELD(isoSpeedRatings, IsoSpeedRatings, short_, shortValue, 1),
    FIELD(oecf, Oecf, undefined, bytes, 255),
    FIELD(exifVersion, ExifVersion, undefined, rawText, 4),
    FIELD(dateTimeOriginal, DateTimeOriginal, ascii, text, 19),
    FIELD(dateTimeDigitized, DateTimeDigitized, ascii, text, 19),
    FIELD(componentsConfiguration, ComponentsConfiguration, undefined, rawText, 4),
    FIELD(compressedBitsPerPixel, CompressedBitsPerPixel, rational, rationals, 1),
    FIELD(shutterSpeedValue, ShutterSpeedValue, srational, rationals, 1),
    FIELD(apertureValue, ApertureValue, rational, rationals, 1),
    FIELD(brightnessValue, BrightnessValue, srational, rationals, 1),
    FIELD(exposureBiasValue, ExposureBiasValue, srational, rationals, 1),
    FIELD(maxApertureValue, MaxApertureValue, rational, rationals, 1),
    FIELD(subjectDistance, SubjectDistance, rational, rationals, 1),
    FIELD(meteringMode, MeteringMode, short_, shortValue, 1),
    FIELD(lightSource, LightSource, short_, shortValue, 1),
    FIELD(flash, Flash, short_, shortValue, 1),
    FIELD(focalLength, FocalLength, rational, rationals, 1),
    FIELD(subjectArea, SubjectArea, short_, subjectArea, 4),
    FIELD(makerNote, MakerNote, undefined, makerNote, 0),
    {{tag::userComment, TiffType::undefined, Fetch::userComment, 8, offsetof(ExifIfdRecord, userCommentCode), sizeof(ExifIfdRecord::userCommentCode), offsetof(ExifIfdRecord, hasUserComment)}, "UserComment"},
    FIELD(subSecTime, SubSecTime, ascii, bytes, 34),
    FIELD(subSecTimeOriginal, SubSecTimeOriginal, ascii, bytes, 34),
    FIELD(subSecTimeDigitized, SubSecTimeDigitized, ascii, bytes, 34),
    FIELD(flashpixVersion, FlashpixVersion, undefined, rawText, 4),
    FIELD(colorSpace, ColorSpace, short_, shortValue, 1),
    FIELD(pixelXDimension, PixelXDimension, long_, shortOrLong, 1),
    FIELD(pixelYDimension, PixelYDimension, long_, shortOrLong, 1),
    FIELD(relatedSoundFile, RelatedSoundFile, ascii, shortText, 14),
    {{tag::interoperabilityIfdPointer, TiffType::long_, Fetch::interoperability, 1, noField, 0, noField}},
    FIELD(flashEnergy, FlashEnergy, rational, rationals, 1),
    FIELD(focalPlaneXResolution, FocalPlaneXResolution, rational, rationals, 1),
    FIELD(focalPlaneYResolution, FocalPlaneYResolution, rational, rationals, 1),
    FIELD(focalPlaneResolutionUnit, FocalPlaneResolutionUnit, short_, shortValue, 1),
    FIELD(subjectLocation, SubjectLocation, short_, shorts, 2),
    FIELD(exposureIndex, ExposureIndex, rational, rationals, 1),
    FIELD(sensingMethod, SensingMethod, short_, shortValue, 1),
    FIELD(fileSource, FileSource, undefined, rawByte, 1),
    FIELD(sceneType, SceneType, undefined, rawByte, 1),
    FIELD(customRendered, CustomRendered, short_, shortValue, 1),
    FIELD(exposureMode, ExposureMode, short_, shortValue, 1),
    FIELD(whiteBalance, WhiteBalance, short_, shortValue, 1),
    FIELD(digitalZoomRatio, DigitalZoomRatio, rational, rationals, 1),
    FIELD(focalLengthIn35mmFilm, FocalLengthIn35mmFilm, short_, shortValue, 1),
    FIELD(sceneCaptureType, SceneCaptureType, short_, shortValue, 1),
    FIELD(gainControl, GainControl, short_, shortValue, 1),
    FIELD(contrast, Contrast, short_, shortValue, 1),
    FIELD(saturation, Saturation, short_, shortValue, 1),
    FIELD(sharpness, Sharpness, short_, shortValue, 1),
    FIELD(subjectDistanceRange, SubjectDistanceRange, short_, shortValue, 1),
    FIELD(imageUniqueId, ImageUniqueId, ascii, bytes, 34),
};
#undef RECORD

#define RECORD GpsIfdRecord
inline constexpr NamedTag namedGpsTags[] = {
    FIELD(gpsVersionId, GpsVersionId, byte, rawText, 4),
    FIELD(gpsLatitudeRef, GpsLatitudeRef, ascii, rawText, 2),
    FIELD(gpsLatitude, GpsLatitude, rational, rationals, 3),
    FIELD(gpsLongitudeRef, GpsLongitudeRef, ascii, rawText, 2),
    FIELD(gpsLongitude, GpsLongitude, rational, rationals, 3),
    FIELD(gpsAltitudeRef, GpsAltitudeRef, byte, rawByte, 1),
    FIELD(gpsAltitude, GpsAltitude, rational, rationals, 1),
    FIELD(gpsTimeStamp, GpsTimeStamp, rational, rationals, 3),
    FIELD(gpsSatellites, GpsSatellites, ascii, bytes, 255),
    FIELD(gpsStatus, GpsStatus, ascii, rawText, 2),
    FIELD(gpsMeasureMode, GpsMeasureMode, ascii, rawText, 2),
    FIELD(gpsDop, GpsDop, rational, rationals, 1),
    FIELD(gpsSpeedRef, GpsSpeedRef, ascii, rawText, 2),
    FIELD(gpsSpeed, GpsSpeed, rational, rationals, 1),
    FIELD(gpsTrackRef, GpsTrackRef, ascii, rawText, 2),
    FIELD(gpsTrack, GpsTrack, rational, rationals, 1),
    FIELD(gpsImgDirectionRef, GpsImgDirectionRef, ascii, rawText, 2),
    FIELD(gpsImgDirection, GpsImgDirection, rational, rationals, 1),
    FIELD(gpsMapDatum, GpsMapDatum, ascii, bytes, 255),
    FIELD(gpsDestLatitudeRef, GpsDestLatitudeRef, ascii, rawText, 2),
    FIELD(gpsDestLatitude, GpsDestLatitude, rational, rationals, 3),
    FIELD(gpsDestLongitudeRef, GpsDestLongitudeRef, ascii, rawText, 2),
    FIELD(gpsDestLongitude, GpsDestLongitude, rational, rationals, 3),
    FIELD(gpsDestBearingRef, GpsDestBearingRef, ascii, rawText, 2),
    FIELD(gpsDestBearing, GpsDestBearing, rational, rationals, 1),
    FIELD(gpsDestDistanceRef, GpsDestDistanceRef, ascii, rawText, 2),
    FIELD(gpsDestDistance, GpsDestDistance, rational, rationals, 1),
    FIELD(gpsProcessingMethod, GpsProcessingMethod, undefined, bytes, 255),
    FIELD(gpsAreaInformation, GpsAreaInformation, undefined, bytes, 255),
    FIELD(gpsDateStamp, GpsDateStamp, ascii, bytes, 11),
    FIELD(gpsDifferential, GpsDifferential, short_, shortValue, 1),
};
#undef RECORD
#undef FIELD

// The rows without the names, as every call looks at many of them and few use the names.
template <size_t count>
consteval std::array<TagRow, count> rowsOf(const NamedTag (&tags)[count]) {
  std::array<TagRow, count> rows;
  std::ranges::transform(tags, rows.begin(), &NamedTag::row);
  return rows;
}
inline constexpr auto imageTags = rowsOf(namedImageTags);
inline constexpr auto exifTags = rowsOf(namedExifTags);
inline constexpr auto gpsTags = rowsOf(namedGpsTags);

// Part of the Exif record, as the interoperability directory has no record of its own.
inline constexpr TagRow interoperabilityTags[] = {
    TagRow{tag::interoperabilityIndex, TiffType::ascii, Fetch::isR98, 4, noField, 0, offsetof(ExifIfdRecord, isR98Interoperability)},
    TagRow{tag::interoperabilityVersion, TiffType::undefined, Fetch::rawText, 4, offsetof(ExifIfdRecord, interoperabilityVersion), sizeof(ExifIfdRecord::interoperabilityVersion), noField},
};

// clang-format on

using TagTable = std::span<const TagRow>;

// The row of a tag. A tag that the table does not have is a compile-time error.
constexpr const TagRow& knownTag(TagTable table, uint16_t tag) {
  for (const TagRow& row : table)
    if (row.tag == tag) return row;
  throw "the table has no row of that tag";
}

namespace tag_tables_check {

// The maximum number of bytes that are stored, including the terminator.
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

constexpr bool isSound(TagTable table) {
  for (size_t i = 0; i < table.size(); ++i) {
    if (i > 0 && table[i - 1].tag >= table[i].tag) throw "a row is out of order";
    if (bytesStored(table[i]) > table[i].capacity) throw "a field cannot hold its value";
  }
  return true;
}

static_assert(isSound(imageTags) && isSound(exifTags) && isSound(gpsTags) &&
              isSound(interoperabilityTags));

}  // namespace tag_tables_check

}  // namespace exifkeep
