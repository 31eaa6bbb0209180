// The recording that a picture names.
#pragma once

#include "probe/exif_reader.h"

namespace exifkeep {

// Copies the picture's RelatedSoundFile, when it is a WAV name, to `name`, a buffer of at least 15
// bytes. False, and the buffer untouched, otherwise.
bool readSoundFileName(ExifReader& reader, const char* path, char* name);

}  // namespace exifkeep
