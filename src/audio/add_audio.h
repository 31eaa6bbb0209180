// Attaching a recording to a picture: the recording is put in its place, then the picture is
// rewritten with the host's image, naming the recording in RelatedSoundFile and the host in
// Software.
#pragma once

#include <praster.h>
#include <windows.h>

namespace exifkeep {

// Both rewrite the picture under its own path when it holds Exif data or is TIFF by name. Any other
// becomes a JPEG file: the extension in `picturePath` is then made jpg just before the file is
// saved, and stays so when saving fails. A picture whose file name has no '.' is refused before
// anything is touched, for no format could be told from it.

// Names the recording after the picture and leaves making it to the host. REQUIRES: an image and a
// path that is not empty.
bool addAudio(char* picturePath, const char* software, PRaster* image, PRaster* thumbnail);

enum class AudioResult { failed, attached, cancelled };

// Copies the recording beside the picture, leaves its new name in `soundPath`, and attaches it. A
// sound path without a file name is refused before anything is touched; a recording that was copied
// stays when the picture cannot be rewritten. REQUIRES: as addAudio.
AudioResult addAudioFile(char* picturePath, const char* software, char* soundPath, PRaster* image,
                         PRaster* thumbnail, HWND owner);

}  // namespace exifkeep
