// SPDX-License-Identifier: MIT
// Attaches a recording to a picture: copies the recording beside the picture, then rewrites the
// picture with the host's image, the recording's name in RelatedSoundFile and the host's in
// Software.
#pragma once

#include <praster.h>
#include <windows.h>

namespace exifkeep {

// Both rewrite the picture under its own path if it has Exif data or is TIFF by name. Any other
// picture becomes a JPEG file: the extension in `picturePath` is changed to jpg just before saving,
// and is not changed back if saving fails. A file name without a '.' names no format; such a
// picture is refused before anything is touched.

// Derives the recording's name from the picture's; the host makes the recording. REQUIRES: an image
// and a path that is not empty.
bool addAudio(char* picturePath, const char* software, PRaster* image, PRaster* thumbnail);

enum class AudioResult { failed, attached, cancelled };

// Copies the recording beside the picture, stores its new name in `soundPath`, and attaches it. A
// sound path without a file name is refused before anything is touched. If the picture cannot be
// rewritten, the copied recording is kept. REQUIRES: as addAudio.
AudioResult addAudioFile(char* picturePath, const char* software, char* soundPath, PRaster* image,
                         PRaster* thumbnail, HWND owner);

}  // namespace exifkeep
