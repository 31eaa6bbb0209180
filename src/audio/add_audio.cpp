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

// What a picture is to record.
struct Annotation {
  std::string_view software;
  std::string_view soundName;
};

// Cuts what the field cannot hold and clears what the text does not fill.
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

// REQUIRES: a '.' in the file name, and room for three bytes behind it.
void makeJpegName(char* path) {
  const size_t extensionSize = extensionOf(path).size();
  std::strcpy(path + std::strlen(path) - extensionSize, "jpg");
}

// The name alone decides how a picture is written: a TIFF file named .jpg becomes a JPEG file, a
// JPEG file named .tif a TIFF file. Intended: hosts go by the name as well.
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

  // What cannot be converted is not refused here; the codec writes images of any depth.
  image->ConvertTo24bit(nullptr, 0, 100);
  if (!isTiff) makeJpegName(path);
  return isTiff
             ? saveNewExifTiff(reader, path, image, thumbnail, metadata.exif, metadata.primary)
             : saveJpegWithNewExif(reader, path, image, thumbnail, metadata.exif, metadata.primary);
}

// A name without a '.', be it "jpg" itself, is refused as a save would refuse it, but before the
// recording is copied.
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
  // The host's buffer holds it: a name is replaced only when it is longer than the new one.
  const std::string soundName(fileNameOf(destination));
  std::strcpy(soundPath, soundName.c_str());
  return rewritePicture(picturePath, {software, soundName}, image, thumbnail)
             ? AudioResult::attached
             : AudioResult::failed;
}

}  // namespace exifkeep
