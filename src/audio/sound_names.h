// The names of sound recordings: rules on the bytes of 8-bit paths that touch no file. A name made
// here is an 8.3 name, as RelatedSoundFile wants it (Exif 2.2, 4.6.5 C): at most 12 bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace exifkeep {

inline constexpr size_t longestSoundName = 12;

// The recording named after a picture: DSC00123.wav for DSC00123.JPG, Summer~1.wav for
// "Summer holiday.jpg".
std::string soundNameForPicture(std::string_view picturePath);

// The n-th short name for a recording whose own name is too long: Record01.wav for
// "Recording at the beach.wav". REQUIRES: a name of more than longestSoundName bytes, n from 1 to
// lastShortName.
inline constexpr int lastShortName = 99;
std::string shortSoundName(std::string_view longName, int n);

}  // namespace exifkeep
