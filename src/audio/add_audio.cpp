// SPDX-License-Identifier: MIT
#include "audio/add_audio.h"

#include <cstring>

#include "audio/copy_recording.h"
#include "audio/sound_names.h"
#include "imageio/image_codec_bridge.h"
#include "read/read_source.h"
#include "system/path.h"
#include "tiff/save_tiff.h"
#include "write/save_jpeg.h"

namespace exifkeep {

namespace {

// What is written into a picture.
struct Annotation {
  std::string_view software;
  std::string_view soundName;
};

// Truncates the text to the field and clears the rest of the field.
template <size_t size>
void setText(char (&field)[size], std::string_view text) {
  std::memset(field, 0, size);
  text.copy(field, size - 1);
}

void annotate(const Annotation& annotation, ExifMetadata& metadata) {
  setText(metadata.exif.relatedSoundFile, annotation.soundName);
  metadata.exif.hasRelatedSoundFile = 1;
  setText(metadata.primary.software, annotation.software);
  metadata.primary.hasSoftware = 1;
}

// REQUIRES: a '.' in the file name, and room for three bytes after it.
void makeJpegName(char* path) {
  const size_t extensionSize = extensionOf(path).size();
  std::strcpy(path + std::strlen(path) - extensionSize, "jpg");
}

// Only the name decides how a picture is written: a TIFF file named .jpg becomes a JPEG file, and a
// JPEG file named .tif becomes a TIFF file. Intended: hosts also rely on the name.
bool rewritePicture(char* path, const Annotation& annotation, PRaster* image, PRaster* thumbnail) {
  ExifReader reader;
  ExifMetadata metadata;
  const Source found = readSource(reader, path, metadata);
  if (found == Source::unreadable) return false;
  annotate(annotation, metadata);
  const bool isTiff = isTiffName(path);
  if (found == Source::exif)
    return isTiff ? saveTiffWithRecords(reader, path, image, thumbnail, metadata)
                  : saveJpegWithRecords(reader, path, image, thumbnail, metadata);

  // A failed conversion is not an error: the codec writes images of any depth.
  image->ConvertTo24bit();
  if (!isTiff) makeJpegName(path);
  return isTiff
             ? saveNewExifTiff(reader, path, image, thumbnail, metadata.exif, metadata.primary)
             : saveJpegWithNewExif(reader, path, image, thumbnail, metadata.exif, metadata.primary);
}

// A name without a '.', even "jpg" itself, is refused as in a save, but before the recording is
// copied.
bool canBeSaved(const char* picturePath) {
  if (hasExtension(picturePath)) return true;
  ImageCodecBridge::showUnwritable();
  return false;
}

}  // namespace

bool addAudio(char* picturePath, const char* software, PRaster* image, PRaster* thumbnail) {
  if (!canBeSaved(picturePath)) return false;
  const std::string soundName = soundNameForPicture(picturePath);
  return rewritePicture(picturePath, {software, soundName}, image, thumbnail);
}

AudioResult addAudioFile(char* picturePath, const char* software, char* soundPath, PRaster* image,
                         PRaster* thumbnail, HWND owner) {
  if (!canBeSaved(picturePath) || fileNameOf(soundPath).empty()) return AudioResult::failed;
  const std::string destination = recordingDestination(picturePath, soundPath);
  if (destination.empty()) return AudioResult::failed;
  const CopyResult copied = copyRecording(soundPath, destination, owner);
  if (copied == CopyResult::cancelled) return AudioResult::cancelled;
  if (copied == CopyResult::failed) return AudioResult::failed;
  // This fits into the host's buffer: a name is only ever replaced by a shorter one.
  const std::string soundName(fileNameOf(destination));
  std::strcpy(soundPath, soundName.c_str());
  return rewritePicture(picturePath, {software, soundName}, image, thumbnail)
             ? AudioResult::attached
             : AudioResult::failed;
}

}  // namespace exifkeep
