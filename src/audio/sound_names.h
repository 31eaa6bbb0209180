// SPDX-License-Identifier: MIT
// Derives the names of sound recordings from paths. All are 8.3 names of at most 12 bytes, as
// required in RelatedSoundFile (Exif 2.2, 4.6.5 C).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace exifkeep {

inline constexpr size_t maxSoundNameLength = 12;

// The recording named after a picture: DSC00123.wav for DSC00123.JPG, Summer~1.wav for
// "Summer holiday.jpg".
std::string soundNameForPicture(std::string_view picturePath);

// The n-th short name for a recording whose own name is too long: Record01.wav for
// "Recording at the beach.wav". REQUIRES: a name of more than maxSoundNameLength bytes, n from 1 to
// lastShortName.
inline constexpr int lastShortName = 99;
std::string shortSoundName(std::string_view longName, int n);

}  // namespace exifkeep
