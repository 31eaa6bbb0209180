// SPDX-License-Identifier: MIT
// exifkeep audio: stores the name of a sound recording in a picture, and copies the recording.
#include <exifkeep/exifkeep.h>

#include <algorithm>
#include <vector>

#include "answers.h"
#include "command_options.h"
#include "copy_dialogue.h"
#include "image_files.h"
#include "other_metadata.h"
#include "standard_streams.h"
#include "system.h"

namespace program {
namespace {

// `target` is the picture to write. Without a sound only a name is stored; without a picture the
// target's own image is used; without a thumbnail one is made from the image.
struct AudioOptions {
  std::string target, sound, picture, thumbnail;
  std::string software = "exifkeep";
  bool overwrite = false;
  bool damaged = false;
};

// A path that the library may modify, with room for another extension or name.
class PathBuffer {
 public:
  explicit PathBuffer(const std::string& path)
      : bytes_(std::max(path.size() + maxExtensionSize, maxNameSize) + 1) {
    std::copy(path.begin(), path.end(), bytes_.begin());
  }
  char* data() { return bytes_.data(); }
  std::string text() const { return bytes_.data(); }

 private:
  static constexpr size_t maxExtensionSize = 4;
  static constexpr size_t maxNameSize = 15;
  std::vector<char> bytes_;
};

bool hasTiffName(const std::string& path) {
  const std::string extension = path.substr(path.rfind('.') + 1);
  return lstrcmpiA(extension.c_str(), "tif") == 0 || lstrcmpiA(extension.c_str(), "tiff") == 0;
}

// The file that will be written: a picture without Exif data becomes a JPEG file beside it. The
// library will reject a name without an extension.
std::string writtenPath(const std::string& path) {
  if (hasTiffName(path) || IsExifFile(path.c_str())) return path;
  const size_t dot = path.rfind('.');
  if (dot == std::string::npos || path.find('/', dot) != std::string::npos) return path;
  return path.substr(0, dot + 1) + "jpg";
}

bool mayBeWritten(const std::string& path, const CopyDialogue& dialogue) {
  const std::string written = writtenPath(path);
  return written == path || !isThere(written) || dialogue.mayOverwrite(written);
}

// Returns the name stored in the picture, or nothing if the picture was not rewritten.
std::string attach(const AudioOptions& options, PathBuffer& path, PRaster& image,
                   PRaster* thumbnail) {
  const CopyDialogue dialogue(options.overwrite);
  if (!mayBeWritten(options.target, dialogue)) return "";
  const char* software = options.software.c_str();
  const EndingDelay delay;
  if (options.sound.empty()) {
    char name[15] = "";
    if (AddAudio(path.data(), software, &image, thumbnail)) GetSoundFile(path.data(), name);
    return name;
  }
  PathBuffer sound(options.sound);
  const int result = AddAudioFile(path.data(), software, sound.data(), &image, thumbnail, nullptr);
  return result == 1 ? sound.text() : "";
}

// GetSoundFile reports names with these extensions only.
std::string checkSound(const std::string& name) {
  const std::string extension = name.substr(std::min(name.rfind('.'), name.size()));
  if (extension == ".wav" || extension == ".WAV" || extension == ".Wav") return "";
  return "the name of a recording must end in .wav, .WAV or .Wav";
}

ExitStatus audio(const AudioOptions& options) {
  if (!canBeOpened(options.target)) return ExitStatus::failed;
  if (!options.sound.empty() && !canBeOpened(options.sound)) return ExitStatus::failed;
  PRaster image, thumbnail;
  const std::string& picture = options.picture.empty() ? options.target : options.picture;
  if (!readImage(picture, image, options.damaged)) return ExitStatus::failed;
  const bool ownThumbnail = !options.thumbnail.empty();
  if (ownThumbnail && !readImage(options.thumbnail, thumbnail, options.damaged))
    return ExitStatus::failed;

  const std::string lost = otherMetadata(options.target);
  PathBuffer path(options.target);
  const std::string name = attach(options, path, image, ownThumbnail ? &thumbnail : nullptr);
  if (name.empty()) {
    const std::string written = writtenPath(options.target);
    const std::string unread = whyNotReadToEnd(options.target);
    const std::string why =
        unread.empty() ? whyNotWritten(written, "") : options.target + " cannot be read: " + unread;
    complainAbout(written, "no recording attached" + (why.empty() ? "" : ": " + why));
    return ExitStatus::failed;
  }
  printAnswer(path.text(), name);
  if (!lost.empty()) noteAbout(path.text(), "not kept: " + lost);
  return ExitStatus::ok;
}

}  // namespace

void addAudio(CLI::App& program, Command& chosen) {
  CLI::App& command = addCommand(program, "audio", "Attach a sound recording to a picture");
  auto options = std::make_shared<AudioOptions>();
  addArgument(command, "PICTURE", options->target, "Picture that the recording belongs to");
  addText(command, "--sound", options->sound, "WAV", "Recording to copy beside the picture",
          checkSound);
  addText(command, "--software", options->software, "NAME",
          "Value of the Software field, exifkeep by default", [](const std::string& name) {
            return name.size() <= 255 ? "" : "the name of the software may have at most 255 bytes";
          });
  addText(command, "--picture", options->picture, "FILE",
          "Image to write, PICTURE's own by default");
  addText(command, "--thumbnail", options->thumbnail, "FILE",
          "Thumbnail, made from the image by default");
  addFlag(command, "--damaged", options->damaged,
          "Write damaged pictures as far as they could be decoded");
  addFlag(command, "--yes", options->overwrite, "Overwrite existing files without asking");
  addFooter(
      command,
      "Without --sound, only a name is stored, which is derived from the picture's. A picture\n"
      "without Exif data that is not a TIFF file becomes a .jpg file beside it.\n\n"
      "Examples:\n"
      "  exifkeep audio photo.jpg --sound note.wav\n"
      "  exifkeep audio photo.jpg --software 'My Album'\n",
      statusesOfWriting);
  setBody(command, chosen, options, audio);
}

}  // namespace program
