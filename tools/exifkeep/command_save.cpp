// exifkeep save: an image into a new file, with the metadata of the picture it comes from.
#include <exifkeep/exifkeep.h>

#include "commands.h"
#include "file_refusal.h"
#include "image_files.h"
#include "standard_streams.h"

namespace program {
namespace {

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

}  // namespace

ExitStatus save(const SaveOptions& options) {
  if (!canBeOpened(options.source)) return ExitStatus::failed;
  PRaster image, thumbnail;
  const bool ownPicture = options.picture.empty();
  if (!readImage(ownPicture ? options.source : options.picture, image)) return ExitStatus::failed;
  const bool ownThumbnail = !options.thumbnail.empty();
  if (ownThumbnail && !readImage(options.thumbnail, thumbnail)) return ExitStatus::failed;

  const bool sourceHadExif = IsExifFile(options.source.c_str()) != 0;
  if (!saveFile(options, image, ownThumbnail ? &thumbnail : nullptr)) {
    complainAbout(
        options.destination,
        "not saved: " +
            whyNotWritten(options.destination, "the thumbnail may be too large, or the disk full"));
    return ExitStatus::failed;
  }
  noteAbout(options.destination, outcome(options, sourceHadExif));
  return ExitStatus::ok;
}

}  // namespace program
