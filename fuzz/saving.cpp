// SPDX-License-Identifier: MIT
#include "saving.h"

#include <exifkeep/exifkeep.h>

#include <filesystem>

#include "budget.h"

namespace exifkeep::fuzz {

namespace {

constexpr unsigned width = 24, height = 16;
constexpr int processCodes = 8;  // codes 2 to 6 have a meaning

struct Choice {
  explicit Choice(unsigned bits)
      : processCode(static_cast<int>(bits % processCodes)),
        overSource(bits & 8),
        hasThumbnail(bits & 16) {}
  int processCode;
  bool overSource, hasThumbnail;
};

// The saved file must be readable.
void requireReadable(const std::string& path) {
  const int isExif = IsExifFile(path.c_str());
  CPtrList list;
  require(GetExifInfo(path.c_str(), &list) == isExif, "a saved file that cannot be listed");
  require(FreeInfoList(&list) == 1, "items left over");
  PRaster thumbnail;
  require(OpenExifFile(path.c_str(), nullptr, &thumbnail) == isExif, "a saved file does not open");
}

}  // namespace

void saveFromInput(const PictureInput& input, const char* extension) {
  const Choice choice(input.choice());
  const Budget budget(input.bytes().size());
  const std::string destination =
      choice.overSource ? input.path() : scratchPath(std::string("saved.") + extension);
  if (!choice.overSource) std::filesystem::remove(destination);
  PRaster picture = makePicture(width, height), thumbnail = makePicture(16, 12);
  require(SaveProcessFile(input.path().c_str(), destination.c_str(), choice.processCode, &picture,
                          choice.hasThumbnail ? &thumbnail : nullptr) == 1,
          "a source that keeps a picture from being saved");
  requireSaved(destination, width, height);
  requireReadable(destination);
  budget.check();
}

}  // namespace exifkeep::fuzz
