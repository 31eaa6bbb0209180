// SPDX-License-Identifier: MIT
#include "audio/sound_file.h"

#include <cstring>

#include "read/read_metadata.h"

namespace exifkeep {

bool readSoundFileName(ExifReader& reader, const char* path, char* name) {
  ExifIfdRecord exif;
  reader.maxValueLength = 0;
  if (!readExifDirectory(reader, path, exif) || !exif.hasRelatedSoundFile) return false;
  // Only these three spellings, but anywhere in the name. Intended: hosts rely on it.
  for (const char* extension : {".wav", ".WAV", ".Wav"}) {
    if (!std::strstr(exif.relatedSoundFile, extension)) continue;
    std::memcpy(name, exif.relatedSoundFile, std::strlen(exif.relatedSoundFile) + 1);
    return true;
  }
  return false;
}

}  // namespace exifkeep
