// SPDX-License-Identifier: MIT
// attach_recording: attaches a sound recording to an Exif picture.
//
//   attach_recording PICTURE RECORDING.wav
//
// The recording is copied beside the picture, and its name is stored in the picture. Shows how a
// host handles the library's questions and provides paths that the library may modify.
#include <exifkeep/exifkeep.h>
#include <shell_copy_handler.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

// Without this function an existing file is never overwritten. The window is the one passed to
// AddAudioFile.
bool mayOverwrite(void*, HWND, const char*, const char* target) {
  std::printf("%s exists. Overwrite it? [y/N] ", target);
  std::fflush(stdout);
  char answer[16] = "";
  return std::fgets(answer, sizeof answer, stdin) != nullptr && (*answer == 'y' || *answer == 'Y');
}

// Called while the recording is copied; false would cancel the copy.
bool showProgress(void*, HWND, uint64_t done, uint64_t total) {
  std::fprintf(stderr, "\rcopied %llu of %llu bytes", static_cast<unsigned long long>(done),
               static_cast<unsigned long long>(total));
  if (done == total) std::fputc('\n', stderr);
  return true;
}

// Replaces the library's message box, for example if a picture of this name cannot be written.
int showMessage(void*, const char* text, UINT) {
  std::fprintf(stderr, "attach_recording: %s\n", text);
  return IDOK;
}

// Handlers apply to all threads of the process. A host installs them once when it starts.
void installHandlers() {
  ShellCopyHandler handler;
  handler.mayOverwrite = mayOverwrite;
  handler.progress = showProgress;
  SetShellCopyHandler(handler);
  AfxSetMessageBoxHandler(showMessage, nullptr);
}

// The library writes into both paths: the path of the recording is replaced by its new name of at
// most 12 bytes, and a picture that becomes a JPEG file gets the extension jpg.
std::vector<char> writablePath(const char* path) {
  constexpr size_t maxNameSize = 12, maxExtensionSize = 3;
  const size_t length = std::strlen(path);
  std::vector<char> buffer(std::max(length + maxExtensionSize, maxNameSize) + 1);
  std::copy_n(path, length, buffer.begin());
  return buffer;
}

bool attach(const char* picture, const char* recording) {
  // The picture is rewritten with these pixels. A JPEG picture is encoded again, which loses a
  // little quality every time.
  PRaster image, thumbnail;
  if (!OpenExifFile(picture, &image, &thumbnail) || image.IsEmpty()) {
    std::fprintf(stderr, "%s: not an Exif picture that can be decoded\n", picture);
    return false;
  }
  std::vector<char> picturePath = writablePath(picture);
  std::vector<char> soundPath = writablePath(recording);
  // The name of the software is stored in the picture. The last argument is null as there is no
  // window.
  switch (AddAudioFile(picturePath.data(), "attach_recording", soundPath.data(), &image, &thumbnail,
                       nullptr)) {
    case 1: std::printf("%s: %s\n", picturePath.data(), soundPath.data()); return true;
    case 2: std::fprintf(stderr, "%s: cancelled, nothing was changed\n", picture); return false;
    default:
      // The picture is unchanged. The recording may have been copied already.
      std::fprintf(stderr, "%s: the recording could not be attached\n", picture);
      return false;
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fprintf(stderr, "usage: attach_recording PICTURE RECORDING.wav\n");
    return 2;
  }
  installHandlers();
  return attach(arguments[1], arguments[2]) ? 0 : 1;
}
