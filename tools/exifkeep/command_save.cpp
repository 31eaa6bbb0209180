// SPDX-License-Identifier: MIT
// exifkeep save: saves an image with the metadata of the picture that it comes from.
#include <exifkeep/exifkeep.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
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

// Without a picture the source's own image is used, without a thumbnail one is made from the image.
struct SaveOptions {
  std::vector<std::string> names;  // the sources, followed by the destination
  std::string source, destination, picture, thumbnail;
  std::optional<int> processCode;
  bool overwrite = false;
  bool keepTime = false;
  bool damaged = false;
};

// The modification time of a file before it may be overwritten.
class ModificationTime {
 public:
  explicit ModificationTime(const std::string& path)
      : time_(std::filesystem::last_write_time(path, problem_)) {}
  ExitStatus give(const std::string& path) const {
    std::error_code problem = problem_;
    if (!problem) std::filesystem::last_write_time(path, time_, problem);
    if (!problem) return ExitStatus::ok;
    complainAbout(path, "the modification time could not be set: " + problem.message());
    return ExitStatus::failed;
  }

 private:
  std::error_code problem_;
  std::filesystem::file_time_type time_;
};

int saveFile(const SaveOptions& options, PRaster& image, PRaster* thumbnail) {
  const EndingDelay delay;
  const char* source = options.source.c_str();
  const char* destination = options.destination.c_str();
  if (!options.processCode) return SaveFile(source, destination, &image, thumbnail);
  return SaveProcessFile(source, destination, *options.processCode, &image, thumbnail);
}

// Checks the destination, because only some saves keep the metadata.
std::string outcome(const SaveOptions& options, bool sourceHadExif) {
  if (IsExifFile(options.destination.c_str()))
    return "saved with the Exif data of " + options.source;
  if (!sourceHadExif) return "saved without Exif data: " + options.source + " has none";
  return "saved without Exif data, which is kept only from JPEG to JPEG and from TIFF to TIFF";
}

void complainNotSaved(const std::string& destination) {
  const char* guess = "the thumbnail may be too large or the disk full";
  complainAbout(destination, "not saved: " + whyNotWritten(destination, guess));
}

ExitStatus saveOne(const SaveOptions& options) {
  if (!canBeOpened(options.source)) return ExitStatus::failed;
  if (isThere(options.destination) && !isSameFile(options.source, options.destination) &&
      !CopyDialogue(options.overwrite).mayOverwrite(options.destination))
    return ExitStatus::failed;
  const ModificationTime sourceTime(options.source);
  PRaster image, thumbnail;
  const bool ownPicture = options.picture.empty();
  if (!readImage(ownPicture ? options.source : options.picture, image, options.damaged))
    return ExitStatus::failed;
  const bool ownThumbnail = !options.thumbnail.empty();
  if (ownThumbnail && !readImage(options.thumbnail, thumbnail, options.damaged))
    return ExitStatus::failed;

  const bool sourceHadExif = IsExifFile(options.source.c_str()) != 0;
  const std::string lost = otherMetadata(options.source);
  if (!saveFile(options, image, ownThumbnail ? &thumbnail : nullptr)) {
    if (canBeReadToEnd(options.source)) complainNotSaved(options.destination);
    return ExitStatus::failed;
  }
  noteAbout(options.destination,
            outcome(options, sourceHadExif) + (lost.empty() ? "" : "; not kept: " + lost));
  return options.keepTime ? sourceTime.give(options.destination) : ExitStatus::ok;
}

ExitStatus complainOfUsage(const char* text) {
  complain(std::string(text) + " (see exifkeep save --help)");
  return ExitStatus::usage;
}

// The last name is the destination: a file, or a folder for any number of sources.
ExitStatus save(const SaveOptions& options) {
  namespace fs = std::filesystem;
  const std::vector<std::string> sources(options.names.begin(), options.names.end() - 1);
  std::error_code unknown;
  const bool toFolder = fs::is_directory(options.names.back(), unknown);
  if (options.names.back() == "-")
    return complainOfUsage("a picture is written to a file, not to standard output");
  if (sources.size() > 1 && !toFolder) return complainOfUsage("several pictures need a folder");
  if (sources.size() > 1 && !(options.picture + options.thumbnail).empty())
    return complainOfUsage("--picture and --thumbnail are for a single picture");
  ExitStatus worst = ExitStatus::ok;
  std::set<std::string> saved;
  for (const std::string& source : sources) {
    SaveOptions one = options;
    one.source = source;
    one.destination = options.names.back();
    if (toFolder)
      one.destination = (fs::path(one.destination) / fs::path(source).filename()).string();
    if (saved.insert(one.destination).second) {
      worst = std::max(worst, saveOne(one));
    } else {
      complainAbout(source, "not saved: another picture of this name is");
      worst = ExitStatus::failed;
    }
  }
  return worst;
}

}  // namespace

void addSave(CLI::App& program, Command& chosen) {
  CLI::App& command =
      addCommand(program, "save", "Save an image with the metadata of another picture");
  auto options = std::make_shared<SaveOptions>();
  addArguments(command, "SOURCE", options->names, 2,
               "Pictures whose metadata to keep; DESTINATION is the file to write, in the format\n"
               "of its extension, or a folder");
  addText(command, "--picture", options->picture, "FILE", "Image to save, SOURCE's own by default");
  addText(command, "--thumbnail", options->thumbnail, "FILE",
          "Thumbnail, made from the image by default");
  addFlag(command, "--damaged", options->damaged,
          "Write damaged pictures as far as they could be decoded");
  addNumber(command, "--process", options->processCode, 2, 6,
            "How the image was processed: 2 rotated, 3 resized, 4 to 6 filtered");
  addFlag(command, "--keep-time", options->keepTime, "Keep the modification time of SOURCE");
  addFlag(command, "--yes", options->overwrite, "Overwrite files other than SOURCE without asking");
  addFooter(command,
            "Exif data is kept from JPEG to JPEG and from TIFF to TIFF.\n\n"
            "Examples:\n"
            "  exifkeep save photo.jpg copy.jpg\n"
            "  exifkeep save --keep-time *.jpg copies\n"
            "  exifkeep save photo.jpg rotated.jpg --picture edited.png --process 2\n",
            statusesOfWriting);
  setBody(command, chosen, options, save);
}

}  // namespace program
