// SPDX-License-Identifier: MIT
// The ten exported functions: argument checks and the call frame.
#include <exifkeep/exifkeep.h>

#include "api/call_frame.h"
#include "api/save.h"
#include "audio/add_audio.h"
#include "audio/sound_file.h"
#include "imageio/praster_block.h"
#include "info/info_list.h"
#include "open/open_picture.h"
#include "probe/exif_reader.h"
#include "read/exif_version.h"

using namespace exifkeep;

namespace {

bool isGiven(const char* path) {
  return path && *path != '\0';
}

int savePicture(const char* source, const char* destination, int processCode, PRaster* image,
                PRaster* thumbnail) noexcept {
  return runCall<int>(0, [&] {
    return source && destination && !isMissing(image) &&
           saveWithMetadata(source, destination, processCode, image, thumbnail);
  });
}

}  // namespace

int IsExifFile(const char* path) noexcept {
  return runCall<int>(0, [&] {
    ExifReader reader;
    return path && reader.probeFile(path);
  });
}

int GetExifInfo(const char* path, CPtrList* list) noexcept {
  return runCall<int>(0, [&] {
    ExifReader reader;
    return list && isGiven(path) && FillInfoList(reader, path, *list);
  });
}

// Without the frame: this loads no text and throws nothing.
int FreeInfoList(CPtrList* list) noexcept {
  if (!list) return 0;
  emptyInfoList(*list);
  return 1;
}

float GetExifVersion(const char* path) noexcept {
  return runCall(0.0f, [&] {
    ExifReader reader;
    return path ? readExifVersion(reader, path) : 0.0f;
  });
}

int GetSoundFile(const char* path, char* soundFileName) noexcept {
  return runCall<int>(0, [&] {
    ExifReader reader;
    return path && soundFileName && readSoundFileName(reader, path, soundFileName);
  });
}

int OpenExifFile(const char* path, PRaster* image, PRaster* thumbnail) noexcept {
  return runCall<int>(0, [&] {
    ExifReader reader;
    return path && openPicture(reader, path, image, thumbnail);
  });
}

int SaveFile(const char* source, const char* destination, PRaster* image,
             PRaster* thumbnail) noexcept {
  constexpr int noProcessing = 0;
  return savePicture(source, destination, noProcessing, image, thumbnail);
}

int SaveProcessFile(const char* source, const char* destination, int processCode, PRaster* image,
                    PRaster* thumbnail) noexcept {
  return savePicture(source, destination, processCode, image, thumbnail);
}

int AddAudio(char* picturePath, const char* softwareName, PRaster* image,
             PRaster* thumbnail) noexcept {
  return runCall<int>(0, [&] {
    return image && isGiven(picturePath) && softwareName &&
           addAudio(picturePath, softwareName, image, thumbnail);
  });
}

int AddAudioFile(char* picturePath, const char* softwareName, char* soundPath, PRaster* image,
                 PRaster* thumbnail, HWND owner) noexcept {
  return runCall(0, [&] {
    if (!image || !isGiven(picturePath) || !softwareName || !soundPath) return 0;
    switch (addAudioFile(picturePath, softwareName, soundPath, image, thumbnail, owner)) {
      case AudioResult::attached: return 1;
      case AudioResult::cancelled: return 2;
      case AudioResult::failed: break;
    }
    return 0;
  });
}
