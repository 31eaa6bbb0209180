// SPDX-License-Identifier: MIT
#include "audio/sound_names.h"

#include "system/path.h"

namespace exifkeep {

namespace {

constexpr size_t baseSize = 8;
constexpr std::string_view soundExtension = ".wav";

// The first 6 bytes of a long name. A byte with the high bit set begins a double-byte character;
// one that would be cut in half is left out.
std::string_view prefixOf(std::string_view name) {
  constexpr size_t wanted = 6;
  size_t size = 0;
  size_t lastCharacter = 0;
  while (size < wanted) {
    lastCharacter = size;
    size += (static_cast<unsigned char>(name[size]) & 0x80) != 0 ? 2 : 1;
  }
  return name.substr(0, size == wanted ? wanted : lastCharacter);
}

}  // namespace

// Counts bytes and may cut a character in half. Intended: existing recordings have such names. The
// name ".wav" for a picture without an extension is also intended.
std::string soundNameForPicture(std::string_view picturePath) {
  const std::string_view name = fileNameOf(picturePath);
  const size_t dot = name.rfind('.');
  std::string base(name.substr(0, dot == std::string_view::npos ? 0 : dot));
  if (base.size() > baseSize) base.replace(baseSize - 2, std::string::npos, "~1");
  return base.append(soundExtension);
}

std::string shortSoundName(std::string_view longName, int n) {
  std::string name(prefixOf(longName));
  const std::string digits = std::to_string(n);
  name.append(baseSize - name.size() - digits.size(), '0');
  return name.append(digits).append(soundExtension);
}

}  // namespace exifkeep
