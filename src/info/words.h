// Enumerated values and the words that show them: for each field a table of stored value and text
// id, and the id for every value that the table does not list (Exif 2.2, 4.6.4 and 4.6.5).
#pragma once

#include <cstdint>
#include <span>

#include "info/string_table.h"

namespace exifkeep {

struct Word {
  uint16_t value;
  uint16_t id;
};

struct WordTable {
  std::span<const Word> words;
  UINT otherId = word::reserved;

  constexpr UINT idOf(uint32_t value) const {
    for (const Word& word : words)
      if (word.value == value) return word.id;
    return otherId;
  }
};

namespace words {

// Id 158 stands out of order: value 2 got its text later than its neighbours.
inline constexpr Word orientationWords[] = {{1, 17}, {2, 158}, {3, 18}, {4, 20},
                                            {5, 21}, {6, 22},  {7, 23}, {8, 24}};
inline constexpr WordTable orientation{orientationWords};

inline constexpr Word resolutionUnitWords[] = {{2, word::inches}, {3, word::centimeters}};
inline constexpr WordTable resolutionUnit{resolutionUnitWords};

inline constexpr Word positioningWords[] = {{1, 154}, {2, 155}};
inline constexpr WordTable positioning{positioningWords};

inline constexpr Word exposureProgramWords[] = {
    {0, word::notDefined}, {1, 74}, {2, 75}, {3, 76}, {4, 77}, {5, 78}, {6, 79}, {7, 80}, {8, 81}};
inline constexpr WordTable exposureProgram{exposureProgramWords};

inline constexpr Word meteringModeWords[] = {
    {0, word::unknown}, {1, 83}, {2, 84}, {3, 85}, {4, 86}, {5, 87}, {6, 88}, {255, word::other}};
inline constexpr WordTable meteringMode{meteringModeWords};

// The fluorescent and weather kinds that Exif 2.2 added (4, 9 to 15, 24) have no words: intended,
// they show as reserved.
inline constexpr Word lightSourceWords[] = {
    {0, word::unknown}, {1, 90},  {2, 91},  {3, 92},  {17, 93},          {18, 94},
    {19, 95},           {20, 96}, {21, 97}, {22, 98}, {255, word::other}};
inline constexpr WordTable lightSource{lightSourceWords};

// Value 9 (fired, compulsory mode) is not among them: intended, as is the other default.
inline constexpr Word flashWords[] = {
    {0x00, 99},  {0x01, 100}, {0x05, 101}, {0x07, 102}, {0x0D, 103}, {0x0F, 104}, {0x10, 105},
    {0x18, 106}, {0x19, 107}, {0x1D, 108}, {0x1F, 109}, {0x20, 110}, {0x41, 111}, {0x45, 112},
    {0x47, 113}, {0x49, 114}, {0x4D, 115}, {0x4F, 116}, {0x59, 117}, {0x5D, 118}, {0x5F, 119}};
inline constexpr WordTable flash{flashWords, word::notDefined};

inline constexpr Word colorSpaceWords[] = {{1, 120}, {0xFFFF, 121}};
inline constexpr WordTable colorSpace{colorSpaceWords};

inline constexpr Word sensingMethodWords[] = {
    {1, word::notDefined}, {2, 122}, {3, 123}, {4, 124}, {5, 125}, {7, 126}, {8, 127}};
inline constexpr WordTable sensingMethod{sensingMethodWords};

inline constexpr Word fileSourceWords[] = {{3, word::digitalStillCamera}};
inline constexpr WordTable fileSource{fileSourceWords, word::notDigitalStillCamera};

inline constexpr Word sceneTypeWords[] = {{1, word::directlyPhotographed}};
inline constexpr WordTable sceneType{sceneTypeWords};

// Sharpness and contrast.
inline constexpr Word softnessWords[] = {{0, word::normal}, {1, 132}, {2, 133}};
inline constexpr WordTable softness{softnessWords};

inline constexpr Word saturationWords[] = {{0, word::normal}, {1, 134}, {2, 135}};
inline constexpr WordTable saturation{saturationWords};

inline constexpr Word gainControlWords[] = {{0, 136}, {1, 137}, {2, 138}, {3, 139}, {4, 140}};
inline constexpr WordTable gainControl{gainControlWords};

inline constexpr Word sceneCaptureTypeWords[] = {{0, 141}, {1, 142}, {2, 143}, {3, 144}};
inline constexpr WordTable sceneCaptureType{sceneCaptureTypeWords};

inline constexpr Word whiteBalanceWords[] = {{0, 145}, {1, 146}};
inline constexpr WordTable whiteBalance{whiteBalanceWords};

inline constexpr Word exposureModeWords[] = {{0, 147}, {1, 148}, {2, 149}};
inline constexpr WordTable exposureMode{exposureModeWords};

inline constexpr Word customRenderedWords[] = {{0, 150}, {1, 151}};
inline constexpr WordTable customRendered{customRenderedWords};

}  // namespace words

}  // namespace exifkeep
