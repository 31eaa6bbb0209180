// SPDX-License-Identifier: MIT
// The words shown for enumerated values: for each field, a table of values and text ids, and the id
// for all values that the table does not list (Exif 2.2, 4.6.4 and 4.6.5).
#pragma once

#include <cstdint>
#include <initializer_list>

#include "info/string_table.h"

namespace exifkeep {

struct Word {
  uint16_t value;
  uint16_t id;
};

struct WordTable {
  std::initializer_list<Word> words;
  UINT otherId = word::reserved;

  constexpr UINT idOf(uint32_t value) const {
    for (const Word& word : words)
      if (word.value == value) return word.id;
    return otherId;
  }
};

namespace words {

// clang-format off

// Id 158 is out of order because the text of value 2 was added later than its neighbours'.
inline constexpr WordTable orientation{
    {{1, 17}, {2, 158}, {3, 18}, {4, 20}, {5, 21}, {6, 22}, {7, 23}, {8, 24}}};

inline constexpr WordTable resolutionUnit{{{2, word::inches}, {3, word::centimeters}}};

inline constexpr WordTable positioning{{{1, 154}, {2, 155}}};

inline constexpr WordTable exposureProgram{{{0, word::notDefined}, {1, 74}, {2, 75}, {3, 76},
    {4, 77}, {5, 78}, {6, 79}, {7, 80}, {8, 81}}};

inline constexpr WordTable meteringMode{
    {{0, word::unknown}, {1, 83}, {2, 84}, {3, 85}, {4, 86}, {5, 87}, {6, 88}, {255, word::other}}};

// The fluorescent and weather kinds that Exif 2.2 added (4, 9 to 15, 24) have no words. Intended:
// they are shown as reserved.
inline constexpr WordTable lightSource{{{0, word::unknown}, {1, 90}, {2, 91}, {3, 92}, {17, 93},
    {18, 94}, {19, 95}, {20, 96}, {21, 97}, {22, 98}, {255, word::other}}};

// Value 9 (fired, compulsory mode) is missing, and the default is not "reserved": both intended.
inline constexpr WordTable flash{
    {{0x00, 99},  {0x01, 100}, {0x05, 101}, {0x07, 102}, {0x0D, 103}, {0x0F, 104}, {0x10, 105},
     {0x18, 106}, {0x19, 107}, {0x1D, 108}, {0x1F, 109}, {0x20, 110}, {0x41, 111}, {0x45, 112},
     {0x47, 113}, {0x49, 114}, {0x4D, 115}, {0x4F, 116}, {0x59, 117}, {0x5D, 118}, {0x5F, 119}},
    word::notDefined};

inline constexpr WordTable colorSpace{{{1, 120}, {0xFFFF, 121}}};

inline constexpr WordTable sensingMethod{
    {{1, word::notDefined}, {2, 122}, {3, 123}, {4, 124}, {5, 125}, {7, 126}, {8, 127}}};

inline constexpr WordTable fileSource{{{3, word::digitalStillCamera}}, word::notDigitalStillCamera};

inline constexpr WordTable sceneType{{{1, word::directlyPhotographed}}};

// Sharpness and contrast.
inline constexpr WordTable softness{{{0, word::normal}, {1, 132}, {2, 133}}};

inline constexpr WordTable saturation{{{0, word::normal}, {1, 134}, {2, 135}}};

inline constexpr WordTable gainControl{{{0, 136}, {1, 137}, {2, 138}, {3, 139}, {4, 140}}};

inline constexpr WordTable sceneCaptureType{{{0, 141}, {1, 142}, {2, 143}, {3, 144}}};

inline constexpr WordTable whiteBalance{{{0, 145}, {1, 146}}};

inline constexpr WordTable exposureMode{{{0, 147}, {1, 148}, {2, 149}}};

inline constexpr WordTable customRendered{{{0, 150}, {1, 151}}};

// clang-format on

}  // namespace words

}  // namespace exifkeep
