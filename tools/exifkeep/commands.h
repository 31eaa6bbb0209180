// The program's commands, each in a file of its own, and what the command line tells them.
#pragma once

#include <optional>
#include <string>

#include "exit_status.h"
#include "file_names.h"

namespace program {

struct InfoOptions {
  FileNames files;
  std::string language;  // BCP 47; empty for the user's own
  bool json = false;
  bool html = false;
  std::string output;  // file for the HTML page; empty for standard output
};
ExitStatus info(const InfoOptions& options);
// What info does for html, in the language selected before.
ExitStatus listAsHtml(const InfoOptions& options);

ExitStatus check(const FileNames& files);
ExitStatus version(const FileNames& files);
ExitStatus sound(const FileNames& files);
ExitStatus languages();

// An empty file name stands for a part that is not asked for.
struct OpenOptions {
  std::string file, imageFile, thumbnailFile;
};
ExitStatus open(const OpenOptions& options);

// An empty picture is the source's own, an empty thumbnail one made from the image.
struct SaveOptions {
  std::string source, destination, picture, thumbnail;
  std::optional<int> processCode;
};
ExitStatus save(const SaveOptions& options);

// `target` is the picture to write; an empty sound records a name only, the rest as above.
struct AudioOptions {
  std::string target, sound, picture, thumbnail;
  std::string software = "exifkeep";
  bool overwrite = false;
};
ExitStatus audio(const AudioOptions& options);

}  // namespace program
