// SPDX-License-Identifier: MIT
// Files are written through the library, which replaces them atomically; the codec would overwrite
// them.
#include "image_files.h"

#include <exifkeep/exifkeep.h>
#include <pxcodec32.h>
#include <windows.h>

#include <memory>
#include <vector>

#include "answers.h"
#include "standard_streams.h"
#include "system.h"

namespace program {
namespace {

struct BlockFree {
  void operator()(HGLOBAL block) const { GlobalFree(block); }
};

// The extensions that the codec can write.
std::vector<std::string> writableExtensions() {
  std::vector<std::string> extensions;
  constexpr int capacity = 25;
  const std::unique_ptr<void, BlockFree> block(
      GlobalAlloc(GHND, capacity * sizeof(CodecCapability)));
  if (!block) return extensions;
  const int count = AllGetReadWriteCaps(nullptr, block.get());
  const auto* records = static_cast<const CodecCapability*>(GlobalLock(block.get()));
  for (int i = 0; records && i < count; ++i)
    if (records[i].writable) extensions.emplace_back(records[i].extension);
  return extensions;
}

// Empty if the codec can write files of this name, otherwise a message.
std::string whyNotItsFormat(const std::string& path) {
  const std::string extension = path.substr(path.rfind('.') + 1);
  std::string known;
  for (const std::string& candidate : writableExtensions()) {
    if (lstrcmpiA(candidate.c_str(), extension.c_str()) == 0) return "";
    known += (known.empty() ? "" : ", ") + candidate;
  }
  return "unknown extension; pictures can be written as " + known;
}

}  // namespace

bool acceptLostRows(const std::string& path, const PRaster& image, bool damaged) {
  if (image.lostRows() == 0) return true;
  const std::string lost =
      std::to_string(image.lostRows()) + " of " + std::to_string(image.height()) + " rows are lost";
  if (damaged)
    noteAbout(path, "damaged: " + lost);
  else
    complainAbout(path, "damaged: " + lost + "; --damaged writes the picture anyway");
  return damaged;
}

bool readImage(const std::string& path, PRaster& image, bool damaged) {
  if (!canBeOpened(path)) return false;
  if (exifkeep::loadPicture(path.c_str(), image)) return acceptLostRows(path, image, damaged);
  if (canBeReadToEnd(path)) complainAbout(path, "not a picture that can be decoded");
  return false;
}

bool writeImage(const std::string& path, PRaster& image) {
  const EndingDelay delay;
  // Without a source only the image is saved.
  if (SaveFile("", path.c_str(), &image, nullptr)) return true;
  complainAbout(path, "not written: " + whyNotWritten(path, "the disk may be full"));
  return false;
}

bool canBeReadToEnd(const std::string& path) {
  const std::string problem = whyNotReadToEnd(path);
  if (!problem.empty()) complainAbout(path, "cannot be read: " + problem + "; nothing was changed");
  return problem.empty();
}

std::string whyNotWritten(const std::string& path, const std::string& guess) {
  const bool isFolder = path.ends_with('/');
  if (const std::string problem = whyNotItsFormat(path); !isFolder && !problem.empty())
    return problem;
  const std::string problem = whyNotWritable(path);
  return problem.empty() ? guess : problem;
}

}  // namespace program
