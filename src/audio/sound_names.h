// The names of sound recordings: rules on the bytes of 8-bit paths that touch no file. A name made
// here is an 8.3 name, as RelatedSoundFile wants it (Exif 2.2, 4.6.5 C): at most 12 bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace exifkeep {

inline constexpr std::size_t longestSoundName = 12;

// What stands before the file name, its separator included, and the file name itself.
std::string_view directoryOf(std::string_view path);
std::string_view fileNameOf(std::string_view path);

// Whether the file name, and not only its directory, has a '.'.
bool hasExtension(std::string_view path);

// The path with the text behind its last '.' replaced. REQUIRES: hasExtension(path).
std::string withExtension(std::string_view path, std::string_view extension);

// The recording named after a picture: DSC00123.wav for DSC00123.JPG, Summer~1.wav for
// "Summer holiday.jpg".
std::string soundNameForPicture(std::string_view picturePath);

// The n-th short name for a recording whose own name is too long: Record01.wav for
// "Recording at the beach.wav". REQUIRES: a name of more than longestSoundName bytes, n from 1 to
// lastShortName.
inline constexpr int lastShortName = 99;
std::string shortSoundName(std::string_view longName, int n);

}  // namespace exifkeep
