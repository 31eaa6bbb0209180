// The ten exported functions: argument checks and the call frame around what the other folders do.
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

int savePicture(const char* source, const char* destination, int processCode, PRaster* image,
                PRaster* thumbnail) noexcept {
  return runCall(0, [&] {
    if (isMissing(image)) return 0;
    return saveWithMetadata(source, destination, processCode, image, thumbnail) ? 1 : 0;
  });
}

}  // namespace

int IsExifFile(const char* path) noexcept {
  return runCall(0, [&] {
    ExifReader reader;
    return reader.probeFile(path) ? 1 : 0;
  });
}

int GetExifInfo(const char* path, CPtrList* list) noexcept {
  return runCall(0, [&] {
    if (!list || *path == '\0') return 0;
    ExifReader reader;
    return FillInfoList(reader, path, *list) ? 1 : 0;
  });
}

int FreeInfoList(CPtrList* list) noexcept {
  return runCall(0, [&] {
    if (!list) return 0;
    shrinkInfoList(*list, 0);
    return list->GetCount() == 0 ? 1 : 0;
  });
}

float GetExifVersion(const char* path) noexcept {
  return runCall(0.0f, [&] {
    ExifReader reader;
    return readExifVersion(reader, path);
  });
}

int GetSoundFile(const char* path, char* soundFileName) noexcept {
  return runCall(0, [&] {
    ExifReader reader;
    return readSoundFileName(reader, path, soundFileName) ? 1 : 0;
  });
}

int OpenExifFile(const char* path, PRaster* image, PRaster* thumbnail) noexcept {
  return runCall(0, [&] {
    ExifReader reader;
    return openPicture(reader, path, image, thumbnail) ? 1 : 0;
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
  return runCall(0, [&] {
    if (!image || *picturePath == '\0') return 0;
    return addAudio(picturePath, softwareName, image, thumbnail) ? 1 : 0;
  });
}

int AddAudioFile(char* picturePath, const char* softwareName, char* soundPath, PRaster* image,
                 PRaster* thumbnail, HWND owner) noexcept {
  return runCall(0, [&] {
    if (!image || *picturePath == '\0') return 0;
    switch (addAudioFile(picturePath, softwareName, soundPath, image, thumbnail, owner)) {
      case AudioResult::attached: return 1;
      case AudioResult::cancelled: return 2;
      case AudioResult::failed: break;
    }
    return 0;
  });
}
