// SPDX-License-Identifier: MIT
// A picture in which every field that is read has a different value, and what is shown of each,
// written by hand from Exif 2.2: tests that compare with it do not depend on the tables of the
// library. Texts are longer than what is stored of them.
#pragma once

#include "tiff_builder.h"

namespace exifkeep::test {

struct Known {
  Entry entry;
  std::string label, shown;  // in English
};

inline std::string run(char letter, size_t length) {
  return std::string(length, letter);
}

inline Entry signedRational(uint16_t tag, int64_t numerator, int64_t denominator) {
  Entry entry = rationals(tag, {numerator, denominator});
  entry.type = typeSrational;
  return entry;
}

// In the order of the list.
inline const std::vector<Known> fullImage = {
    {text(0x10E, run('d', 300)), "Image Description", run('d', 255)},
    {text(0x13B, run('a', 300)), "Artist", run('a', 255)},
    {text(0x8298, run('c', 300)), "Copyright", run('c', 255)},
    {text(0x10F, run('m', 300)), "Make", run('m', 255)},
    {text(0x110, run('o', 300)), "Model", run('o', 255)},
    {shorts(0x112, {6}), "Orientation of image",
     "Row 0 is at the visible right-hand side of the image, and column 0 is at the visible top."},
    {rationals(0x11A, {300, 2}), "Image resolution in width", "300/2"},
    {rationals(0x11B, {72, 1}), "Image resolution in height", "72"},
    {shorts(0x128, {3}), "Unit of resolution", "centimeters"},
    {text(0x131, run('s', 300)), "Software", run('s', 255)},
    {text(0x132, "2002:05:14 10:20:30+"), "File change date and time", "2002/05/14 10:20:30"},
    {shorts(0x213, {2}), "Y and C positioning", "co-sited"},
    {longs(0x100, {70001}), "Image Width", "70001"},
    {longs(0x101, {70002}), "Image Height", "70002"},
};
// clang-format off
inline const std::vector<Entry> fullImageUnlisted = {
    shorts(0x102, {5, 6, 7}), shorts(0x103, {9}), shorts(0x106, {10}), longs(0x111, {70003}),
    shorts(0x115, {4}), longs(0x116, {70004}), longs(0x117, {70005}), shorts(0x11C, {2}),
    rationals(0x13E, {1, 2, 3, 4}),
    rationals(0x13F, {11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22}),
    rationals(0x211, {31, 32, 33, 34, 35, 36}),
    rationals(0x214, {41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52}),
};
// clang-format on

inline const std::vector<Known> fullExif = {
    {rationals(0x829A, {1, 60}), "Exposure Time", "1/60 (seconds)"},
    {rationals(0x829D, {28, 10}), "F-number", "2.8"},
    {shorts(0x8822, {2}), "Exposure program", "Normal program"},
    {shorts(0x8827, {400}), "ISO Speed Ratings", "400"},
    {bytes(0x9000, "0220"), "Exif Version", "2.20(R98)"},
    {text(0x9003, "2003:06:15 11:21:31+"), "Date and Time of Original", "2003/06/15 11:21:31"},
    {text(0x9004, "2004:07:16 12:22:32+"), "Date and Time of Digitization", "2004/07/16 12:22:32"},
    {bytes(0x9101, "\6\5\4\3"), "Component Configuration", "BGRCr"},
    {rationals(0x9102, {7, 2}), "Compressed Bits Per Pixel", "3.5"},
    {signedRational(0x9201, -13, 2), "Shutter Speed", "-6.5 (APEX)"},
    {rationals(0x9202, {4000000000, 1000000000}), "Aperture", "4.0 (APEX)"},
    {signedRational(0x9204, -2, 3), "ExposureBias", "-0.7 (APEX)"},
    {rationals(0x9205, {3000000000, 1000000000}), "Max Aperture Ratio", "3.0 (APEX)"},
    {shorts(0x9207, {5}), "Metering Mode", "Pattern"},
    {shorts(0x9208, {3}), "Light Source", "Tungsten"},
    {shorts(0x9209, {0x19}), "Flash", "Flash fired, auto mode"},
    {rationals(0x920A, {545, 100}), "Focal Length", "5.4 (mm)"},
    {bytes(0x927C, "a maker note"), "Maker Note", "a maker note"},
    {bytes(0x9286, "UNICODE!" + run('k', 300)), "User Comment", run('k', 255)},
    {bytes(0xA000, "0100"), "FlashPix Version", "1.00"},
    {shorts(0xA001, {65535}), "Color Space", "Uncalibrated"},
    {longs(0xA002, {70006}), "Pixels - X Dimension", "70006"},
    {longs(0xA003, {70007}), "Pixels - Y Dimension", "70007"},
    {rationals(0xA20E, {5001, 2}), "Focal plane X response", "2500.5"},
    {rationals(0xA20F, {5003, 2}), "Focal plane Y response", "2501.5"},
    {shorts(0xA210, {3}), "Focal plane response unit", "centimeters"},
    {shorts(0xA217, {2}), "Sensing method", "One-chip color area sensor"},
    {bytes(0xA300, "\3"), "File source", "DSC"},
    {bytes(0xA301, "\1"), "Scene type", "A directly photographed image"},
    {text(0xA004, "SOUND0001.WAV"), "Related audio file", "SOUND0001.WAV"},
    {text(0x9290, "1:" + run('2', 40)), "DateTime subseconds", "1/" + run('2', 32)},
    {text(0x9292, "3:" + run('4', 40)), "DateTimeDigitized subseconds", "3/" + run('4', 32)},
    {text(0x9291, "5:" + run('6', 40)), "DateTimeOriginal subseconds", "5/" + run('6', 32)},
    {rationals(0xA20B, {4000000001, 1000000000}), "Flash Energy", "4.0 (BCPS)"},
    {signedRational(0x9203, -1, 2), "Brightness", "-0.5 (APEX)"},
    {shorts(0xA40A, {1}), "Sharpness", "Soft"},
    {shorts(0xA409, {1}), "Saturation", "Low saturation"},
    {shorts(0xA408, {2}), "Contrast", "Hard"},
    {shorts(0xA407, {4}), "Gain control", "High gain down"},
    {shorts(0xA406, {3}), "Scene capture type", "Night scene"},
    {rationals(0xA404, {3, 2}), "Digital zoom ratio", "1.5"},
    {shorts(0xA403, {1}), "White balance", "Manual white balance"},
    {shorts(0xA402, {2}), "Exposure mode", "Auto bracket"},
    {shorts(0xA401, {1}), "Custom image processing", "Custom process"},
    {rationals(0xA215, {11, 2}), "Exposure index", "5.5"},
    {shorts(0xA405, {35}), "Focal length in 35 mm film", "35"},
    {text(0xA420, run('u', 40)), "Unique image ID", run('u', 34)},
};
inline const std::vector<Entry> fullExifUnlisted = {
    text(0x8824, run('v', 40)),          bytes(0x8828, run('w', 300)),
    rationals(0x9206, {13, 2}),          shorts(0x9214, {61, 62, 63, 64}),
    shorts(0xA214, {21, 22}).atOffset(), shorts(0xA40C, {3}),
};

// clang-format off
inline const std::vector<Entry> fullGps = {
    bytes(0x00, "\2\3\4\5", typeByte), bytes(0x01, "Na", typeAscii),
    rationals(0x02, {1, 2, 3, 4, 5, 6}), bytes(0x03, "Eb", typeAscii),
    rationals(0x04, {11, 12, 13, 14, 15, 16}), bytes(0x05, "\1", typeByte),
    rationals(0x06, {17, 18}), rationals(0x07, {21, 22, 23, 24, 25, 26}), text(0x08, run('h', 300)),
    bytes(0x09, "Ac", typeAscii), bytes(0x0A, "3d", typeAscii), rationals(0x0B, {27, 28}),
    bytes(0x0C, "Ke", typeAscii), rationals(0x0D, {29, 30}), bytes(0x0E, "Tf", typeAscii),
    rationals(0x0F, {31, 32}), bytes(0x10, "Mg", typeAscii), rationals(0x11, {33, 34}),
    text(0x12, run('i', 300)), bytes(0x13, "Sh", typeAscii),
    rationals(0x14, {41, 42, 43, 44, 45, 46}), bytes(0x15, "Wi", typeAscii),
    rationals(0x16, {51, 52, 53, 54, 55, 56}), bytes(0x17, "Mj", typeAscii),
    rationals(0x18, {57, 58}), bytes(0x19, "Nk", typeAscii), rationals(0x1A, {59, 60}),
    bytes(0x1B, run('j', 300)), bytes(0x1C, run('k', 300)), text(0x1D, "2005:08:17+++"),
    shorts(0x1E, {1}),
};
// clang-format on

inline std::vector<Entry> entriesOf(const std::vector<Known>& listed, std::vector<Entry> entries) {
  for (const Known& known : listed) entries.push_back(known.entry);
  return entries;
}

// IFD1 has the fields of IFD0 with other values.
inline Picture fullPicture() {
  Picture picture{
      .image = entriesOf(fullImage, fullImageUnlisted),
      .exif = entriesOf(fullExif, fullExifUnlisted),
      .interoperability = {bytes(1, std::string("R98\0", 4), typeAscii), bytes(2, "0100")},
      .gps = fullGps,
      .thumbnail = entriesOf(fullImage, fullImageUnlisted)};
  for (Entry& entry : picture.thumbnail)
    for (char& byte : entry.value) byte = byte ? byte ^ 0x40 : 0;
  picture.image.insert(picture.image.end(), {exifPointer(), gpsPointer()});
  picture.exif.push_back(interoperabilityPointer());
  return picture;
}

}  // namespace exifkeep::test
