// exifkeep sound: the names of the recordings that belong to pictures.
#include <exifkeep/exifkeep.h>

#include "answer_lines.h"
#include "commands.h"

namespace program {
namespace {

ExitStatus answer(const std::string& path) {
  char name[15];
  if (!GetSoundFile(path.c_str(), name)) {
    if (!IsExifFile(path.c_str())) return answerNotExif(path);
    printAnswer(path, "no recording", Style::missing);
    return ExitStatus::notExif;
  }
  printAnswer(path, name);
  return ExitStatus::ok;
}

}  // namespace

ExitStatus sound(const FileNames& files) {
  return files.forEach(answer);
}

}  // namespace program
