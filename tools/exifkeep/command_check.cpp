// exifkeep check: whether pictures carry Exif data.
#include <exifkeep/exifkeep.h>

#include "answer_lines.h"
#include "commands.h"
#include "file_names.h"

namespace program {
namespace {

ExitStatus answer(const std::string& path) {
  if (!IsExifFile(path.c_str())) return answerNotExif(path);
  printAnswer(path, "Exif file");
  return ExitStatus::ok;
}

}  // namespace

ExitStatus check(const FileNames& files) {
  return files.forEach(answer);
}

}  // namespace program
