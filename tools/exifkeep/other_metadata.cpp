// SPDX-License-Identifier: MIT
// Detects each kind by its identifier, without reading the data: marker segments up to the scan
// (ITU-T T.81, B.1.1; XMP part 3; ICC.1, annex B), tags of the first directory (TIFF 6.0, section
// 2), chunks (PNG, 11.3).
#include "other_metadata.h"

#include <cstdint>
#include <fstream>
#include <string_view>
#include <utility>

namespace program {
namespace {

using std::string_view_literals::operator""sv;

struct Kinds {
  bool profile = false, xmp = false, iptc = false, comment = false;
};

uint64_t bigEndian(std::string_view bytes) {
  uint64_t number = 0;
  for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
  return number;
}

uint64_t number(std::string_view bytes, bool littleEndian) {
  if (!littleEndian) return bigEndian(bytes);
  return bigEndian(std::string(bytes.rbegin(), bytes.rend()));
}

// The next `size` bytes, or fewer at the end of the file.
std::string take(std::istream& file, size_t size) {
  std::string bytes(size, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<size_t>(file.gcount()));
  return bytes;
}

// Whether image resources ("8BIM", id, name, size, data, each padded to even) include IPTC data.
bool holdsIptc(std::string_view resources) {
  constexpr uint64_t iptcId = 0x0404;
  while (resources.size() >= 12 && resources.starts_with("8BIM")) {
    if (bigEndian(resources.substr(4, 2)) == iptcId) return true;
    const size_t name = (static_cast<unsigned char>(resources[6]) + 2u) & ~1u;
    if (resources.size() < 6 + name + 4) return false;
    const uint64_t data = bigEndian(resources.substr(6 + name, 4));
    const size_t rest = resources.size() - (6 + name + 4);
    if (data >= rest) return false;
    resources.remove_prefix(6 + name + 4 + ((data + 1) & ~uint64_t{1}));
  }
  return false;
}

void noteSegment(unsigned char marker, std::string_view content, Kinds& kinds) {
  constexpr std::string_view photoshop = "Photoshop 3.0\0"sv;
  switch (marker) {
    case 0xE1: kinds.xmp |= content.starts_with("http://ns.adobe.com/x"); break;
    case 0xE2: kinds.profile |= content.starts_with("ICC_PROFILE\0"sv); break;
    case 0xED:
      kinds.iptc |= content.starts_with(photoshop) && holdsIptc(content.substr(photoshop.size()));
      break;
    case 0xFE: kinds.comment = true; break;
    default: break;
  }
}

void noteJpeg(std::istream& file, Kinds& kinds) {
  constexpr unsigned char startOfScan = 0xDA;
  file.seekg(2);
  for (;;) {
    const std::string head = take(file, 4);
    if (head.size() < 4 || head[0] != '\xFF') return;
    const auto marker = static_cast<unsigned char>(head[1]);
    const uint64_t length = bigEndian(std::string_view(head).substr(2));
    if (marker == startOfScan || length < 2) return;
    noteSegment(marker, take(file, length - 2), kinds);
  }
}

void noteTiff(std::istream& file, bool littleEndian, Kinds& kinds) {
  file.seekg(4);
  file.seekg(static_cast<std::streamoff>(number(take(file, 4), littleEndian)));
  for (uint64_t left = number(take(file, 2), littleEndian); left > 0; --left) {
    const std::string entry = take(file, 12);
    if (entry.size() < 12) return;
    switch (number(std::string_view(entry).substr(0, 2), littleEndian)) {
      case 700: kinds.xmp = true; break;
      case 33723: kinds.iptc = true; break;
      case 34675: kinds.profile = true; break;
      default: break;
    }
  }
}

void notePng(std::istream& file, Kinds& kinds) {
  constexpr std::string_view xmpKeyword = "XML:com.adobe.xmp\0"sv;
  file.seekg(8);
  for (;;) {
    const std::string head = take(file, 8);
    if (head.size() < 8) return;
    const auto length = static_cast<std::streamoff>(bigEndian(std::string_view(head).substr(0, 4)));
    const std::string_view type = std::string_view(head).substr(4);
    const std::streamoff next = file.tellg() + length + std::streamoff{4};
    if (type == "iCCP") kinds.profile = true;
    if (type == "iTXt" && take(file, xmpKeyword.size()) == xmpKeyword)
      kinds.xmp = true;
    else if (type == "tEXt" || type == "zTXt" || type == "iTXt")
      kinds.comment = true;
    file.seekg(next);
  }
}

}  // namespace

std::string otherMetadata(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string start = take(file, 8);
  Kinds kinds;
  if (start.starts_with("\xFF\xD8")) noteJpeg(file, kinds);
  if (start.starts_with("II*\0"sv) || start.starts_with("MM\0*"sv))
    noteTiff(file, start[0] == 'I', kinds);
  if (start == "\x89PNG\r\n\x1A\n") notePng(file, kinds);
  std::string list;
  for (const auto& [isThere, name] :
       {std::pair(kinds.profile, "ICC profile"), std::pair(kinds.xmp, "XMP"),
        std::pair(kinds.iptc, "IPTC"), std::pair(kinds.comment, "comment")})
    if (isThere) list += (list.empty() ? "" : ", ") + std::string(name);
  return list;
}

}  // namespace program
