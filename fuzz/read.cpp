// SPDX-License-Identifier: MIT
// Calls all functions that read metadata, in the language chosen by the input.
#include <exifkeep/exifkeep.h>
#include <language.h>
#include <stdlib.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "budget.h"
#include "input.h"

using namespace exifkeep::fuzz;

namespace {

void chooseLanguage(unsigned choice) {
  const auto variants = exifkeep::languageVariants();
  const std::string tag(variants[choice % variants.size()].tag);
  setenv("LANGUAGE", tag.c_str(), 1);
}

void requireTexts(const CPtrList& list) {
  for (const exifkeep::InfoItem& item : exifkeep::items(list))
    require(std::strlen(item.label) + std::strlen(item.value) < (1 << 20), "an endless text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const PictureInput input(data, size);
  const char* path = input.path().c_str();
  const Budget budget(input.bytes().size());
  chooseLanguage(input.choice());
  const int isExif = IsExifFile(path);

  CPtrList list;
  require(GetExifInfo(path, &list) == isExif, "listed, but not an Exif file, or the reverse");
  requireTexts(list);
  require(isExif || list.IsEmpty(), "items of a file that is not an Exif file");
  require(FreeInfoList(&list) == 1 && list.IsEmpty(), "items left over");

  require(std::isfinite(GetExifVersion(path)), "a version that is no number");
  constexpr size_t nameSize = 15;
  const auto name = std::make_unique<char[]>(nameSize);
  require(!GetSoundFile(path, name.get()) || std::memchr(name.get(), 0, nameSize),
          "a sound name without end");
  budget.check();
  return 0;
}
