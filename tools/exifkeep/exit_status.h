// The program's exit statuses. They are ordered by weight: of two files' answers the larger one is
// the program's.
#pragma once

namespace program {

enum class ExitStatus {
  ok = 0,       // every file was an Exif file and had what was asked for
  notExif = 1,  // at least one had not
  usage = 2,    // the command line was wrong; nothing was done
  failed = 3,   // something could not be opened, read or written
};

}  // namespace program
