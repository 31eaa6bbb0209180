// SPDX-License-Identifier: MIT
// exifkeep open: describes a picture and its thumbnail, or writes them to files.
#include <exifkeep/exifkeep.h>

#include <cmath>

#include "answers.h"
#include "command_options.h"
#include "image_files.h"
#include "standard_streams.h"
#include "system.h"
#include "text_table.h"

namespace program {
namespace {

// An empty file name means that the part is not requested.
struct OpenOptions {
  std::string file, imageFile, thumbnailFile;
  bool damaged = false;
};

std::string inches(unsigned dotsPerMetre) {
  return std::to_string(std::lround(dotsPerMetre * 0.0254));
}

std::string describe(const PRaster& image) {
  if (image.IsEmpty()) return "none";
  std::string text = std::to_string(image.GetImageWidth()) + " x " +
                     std::to_string(image.GetImageHeight()) + " pixels, " +
                     std::to_string(image.bitsPerPixel()) +
                     (image.bitsPerPixel() == 1 ? " bit" : " bits");
  if (image.lostRows() != 0) text += ", " + std::to_string(image.lostRows()) + " rows lost";
  if (image.GetDpmX() == 0 || image.GetDpmY() == 0) return text + ", no resolution";
  return text + ", " + inches(image.GetDpmX()) + " x " + inches(image.GetDpmY()) + " dpi";
}

// The library decodes a thumbnail through a temporary file.
bool openFile(const std::string& path, PRaster* image, PRaster* thumbnail) {
  const EndingDelay delay;
  return OpenExifFile(path.c_str(), image, thumbnail) != 0;
}

ExitStatus showBoth(const std::string& path) {
  PRaster image, thumbnail;
  if (!openFile(path, &image, &thumbnail)) return answerNotExif(path);
  TextTable table;
  table.addRow("image", image.IsEmpty() ? "cannot be decoded" : describe(image));
  table.addRow("thumbnail", describe(thumbnail));
  print(table.text());
  return image.IsEmpty() ? ExitStatus::failed : ExitStatus::ok;
}

// Writes `opened` to `target`, unless the part was not requested.
bool writePart(const OpenOptions& options, const char* part, PRaster& opened,
               const std::string& target) {
  if (target.empty()) return true;
  if (!opened.IsEmpty())
    return acceptLostRows(options.file, opened, options.damaged) && writeImage(target, opened);
  complainAbout(options.file, std::string("no ") + part + " that can be decoded");
  return false;
}

// Files are written without metadata, so the picture itself must not be overwritten.
bool wouldOverwrite(const OpenOptions& options, const std::string& target) {
  if (!isSameFile(options.file, target)) return false;
  complainAbout(target, "this is the picture itself; choose another name");
  return true;
}

ExitStatus writeParts(const OpenOptions& options) {
  if (wouldOverwrite(options, options.imageFile) || wouldOverwrite(options, options.thumbnailFile))
    return ExitStatus::failed;
  PRaster image, thumbnail;
  if (!openFile(options.file, options.imageFile.empty() ? nullptr : &image,
                options.thumbnailFile.empty() ? nullptr : &thumbnail)) {
    const FileRefusal refusal = explainRefusal(options.file);
    complainAbout(options.file, refusal.reason);
    return refusal.status;
  }
  const bool imageDone = writePart(options, "image", image, options.imageFile);
  const bool thumbnailDone = writePart(options, "thumbnail", thumbnail, options.thumbnailFile);
  return imageDone && thumbnailDone ? ExitStatus::ok : ExitStatus::failed;
}

ExitStatus open(const OpenOptions& options) {
  const bool describeOnly = options.imageFile.empty() && options.thumbnailFile.empty();
  return describeOnly ? showBoth(options.file) : writeParts(options);
}

}  // namespace

void addOpen(CLI::App& program, Command& chosen) {
  CLI::App& command = addCommand(program, "open", "Decode a picture and its thumbnail");
  auto options = std::make_shared<OpenOptions>();
  addArgument(command, "FILE", options->file, "Picture with Exif data");
  addText(command, "--image", options->imageFile, "OUT", "Write the image to this file",
          checkPictureOutput);
  addText(command, "--thumbnail", options->thumbnailFile, "OUT", "Write the thumbnail to this file",
          checkPictureOutput);
  addFlag(command, "--damaged", options->damaged,
          "Write damaged pictures as far as they could be decoded");
  addFooter(
      command,
      "The extension of OUT selects the format. Without options, the size, depth and resolution\n"
      "of both are printed.\n\n"
      "Examples:\n"
      "  exifkeep open photo.jpg\n"
      "  exifkeep open photo.jpg --thumbnail small.png\n",
      "0 opened, 1 FILE is not an Exif file, 2 wrong usage, 3 a file could not be opened,\n"
      "decoded or written.");
  setBody(command, chosen, options, open);
}

}  // namespace program
