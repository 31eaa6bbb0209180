#include "audio/sound_names.h"

#include "system/path.h"

namespace exifkeep {

namespace {

constexpr size_t baseSize = 8;
constexpr std::string_view soundExtension = ".wav";

// The beginning of a long name, about 6 bytes. The high bit marks the first byte of a double-byte
// character; one that would be cut in two is left out.
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

// The cut counts bytes and may go through a character: intended, existing recordings bear such
// names. So is the name ".wav" for a picture without an extension.
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
