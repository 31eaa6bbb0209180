// exifkeep save: an image into a new file, with the metadata of the picture it comes from.
#include <exifkeep/exifkeep.h>

#include <optional>

#include "answers.h"
#include "command_options.h"
#include "image_files.h"
#include "other_metadata.h"
#include "standard_streams.h"

namespace program {
namespace {

// An empty picture is the source's own, an empty thumbnail one made from the image.
struct SaveOptions {
  std::string source, destination, picture, thumbnail;
  std::optional<int> processCode;
};

int saveFile(const SaveOptions& options, PRaster& image, PRaster* thumbnail) {
  const char* source = options.source.c_str();
  const char* destination = options.destination.c_str();
  if (!options.processCode) return SaveFile(source, destination, &image, thumbnail);
  return SaveProcessFile(source, destination, *options.processCode, &image, thumbnail);
}

// Metadata goes along only between files of one kind, and a plain save writes none: the
// destination itself tells.
std::string outcome(const SaveOptions& options, bool sourceHadExif) {
  if (IsExifFile(options.destination.c_str())) {
    return "saved with the Exif data of " + options.source;
  }
  if (!sourceHadExif) return "saved without Exif data: " + options.source + " has none";
  return "saved without Exif data: it goes from JPEG to JPEG and from TIFF to TIFF only";
}

ExitStatus save(const SaveOptions& options) {
  if (!canBeOpened(options.source)) return ExitStatus::failed;
  PRaster image, thumbnail;
  const bool ownPicture = options.picture.empty();
  if (!readImage(ownPicture ? options.source : options.picture, image)) return ExitStatus::failed;
  const bool ownThumbnail = !options.thumbnail.empty();
  if (ownThumbnail && !readImage(options.thumbnail, thumbnail)) return ExitStatus::failed;

  const bool sourceHadExif = IsExifFile(options.source.c_str()) != 0;
  const std::string lost = otherMetadata(options.source);
  if (!saveFile(options, image, ownThumbnail ? &thumbnail : nullptr)) {
    complainAbout(
        options.destination,
        "not saved: " +
            whyNotWritten(options.destination, "the thumbnail may be too large, or the disk full"));
    return ExitStatus::failed;
  }
  noteAbout(options.destination,
            outcome(options, sourceHadExif) + (lost.empty() ? "" : "; not kept: " + lost));
  return ExitStatus::ok;
}

}  // namespace

void addSave(CLI::App& program, Command& chosen) {
  CLI::App& command =
      addCommand(program, "save", "Save an image with the metadata of another picture");
  auto options = std::make_shared<SaveOptions>();
  addArgument(command, "SOURCE", options->source, "Picture whose metadata goes along");
  addArgument(command, "DESTINATION", options->destination,
              "File to write, in the format of its extension", checkPictureOutput);
  addText(command, "--picture", options->picture, "FILE", "Image to save, SOURCE's own by default");
  addText(command, "--thumbnail", options->thumbnail, "FILE",
          "Thumbnail, made from the image by default");
  addNumber(command, "--process", options->processCode, 2, 6,
            "What was done to the image: 2 turned, 3 resized, 4 to 6 filtered");
  addFooter(command,
            "Metadata goes along from JPEG to JPEG and from TIFF to TIFF.\n\n"
            "Examples:\n"
            "  exifkeep save photo.jpg copy.jpg\n"
            "  exifkeep save photo.jpg turned.jpg --picture edited.png --process 2\n",
            statusesOfWriting);
  setBody(command, chosen, options, save);
}

}  // namespace program
