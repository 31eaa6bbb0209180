// exifkeep open: a picture and its thumbnail as images, described or written to files.
#include <exifkeep/exifkeep.h>

#include <cmath>

#include "answer_lines.h"
#include "commands.h"
#include "file_refusal.h"
#include "image_files.h"
#include "replace_file.h"
#include "standard_streams.h"
#include "text_table.h"

namespace program {
namespace {

std::string inches(unsigned dotsPerMetre) {
  return std::to_string(std::lround(dotsPerMetre * 0.0254));
}

std::string describe(const PRaster& image) {
  if (image.IsEmpty()) return "none";
  std::string text = std::to_string(image.GetImageWidth()) + " x " +
                     std::to_string(image.GetImageHeight()) + " pixels, " +
                     std::to_string(image.bitsPerPixel()) +
                     (image.bitsPerPixel() == 1 ? " bit" : " bits");
  if (image.GetDpmX() == 0 || image.GetDpmY() == 0) return text + ", no resolution";
  return text + ", " + inches(image.GetDpmX()) + " x " + inches(image.GetDpmY()) + " dpi";
}

ExitStatus showBoth(const std::string& path) {
  PRaster image, thumbnail;
  if (!OpenExifFile(path.c_str(), &image, &thumbnail)) return answerNotExif(path);
  TextTable table;
  table.addRow("image", image.IsEmpty() ? "cannot be decoded" : describe(image));
  table.addRow("thumbnail", describe(thumbnail));
  print(table.text());
  return image.IsEmpty() ? ExitStatus::failed : ExitStatus::ok;
}

// Writes what was opened to `target`; an empty target is a part that was not asked for.
bool writePart(const OpenOptions& options, const char* part, PRaster& opened,
               const std::string& target) {
  if (target.empty()) return true;
  if (!opened.IsEmpty()) return writeImage(target, opened);
  complainAbout(options.file, std::string("no ") + part + " that can be decoded");
  return false;
}

// What is written has no metadata, so the picture itself would lose its own.
bool wouldOverwrite(const OpenOptions& options, const std::string& target) {
  if (!isSameFile(options.file, target)) return false;
  complainAbout(target, "is the picture itself; choose another name");
  return true;
}

ExitStatus writeParts(const OpenOptions& options) {
  if (wouldOverwrite(options, options.imageFile) ||
      wouldOverwrite(options, options.thumbnailFile)) {
    return ExitStatus::failed;
  }
  PRaster image, thumbnail;
  if (!OpenExifFile(options.file.c_str(), options.imageFile.empty() ? nullptr : &image,
                    options.thumbnailFile.empty() ? nullptr : &thumbnail)) {
    const FileRefusal refusal = explainRefusal(options.file);
    complainAbout(options.file, refusal.reason);
    return refusal.status;
  }
  const bool imageDone = writePart(options, "image", image, options.imageFile);
  const bool thumbnailDone = writePart(options, "thumbnail", thumbnail, options.thumbnailFile);
  return imageDone && thumbnailDone ? ExitStatus::ok : ExitStatus::failed;
}

}  // namespace

ExitStatus open(const OpenOptions& options) {
  const bool describeOnly = options.imageFile.empty() && options.thumbnailFile.empty();
  return describeOnly ? showBoth(options.file) : writeParts(options);
}

}  // namespace program
