// exifkeep version: the version of the Exif standard that pictures follow.
#include <exifkeep/exifkeep.h>

#include <cstdio>

#include "answer_lines.h"
#include "commands.h"

namespace program {
namespace {

ExitStatus answer(const std::string& path) {
  const float number = GetExifVersion(path.c_str());
  if (number == 0.0f) {
    if (!IsExifFile(path.c_str())) return answerNotExif(path);
    printAnswer(path, "no Exif version", Style::missing);
    return ExitStatus::notExif;
  }
  char digits[32];
  std::snprintf(digits, sizeof digits, "%g", number);
  printAnswer(path, digits);
  return ExitStatus::ok;
}

}  // namespace

ExitStatus version(const FileNames& files) {
  return files.forEach(answer);
}

}  // namespace program
