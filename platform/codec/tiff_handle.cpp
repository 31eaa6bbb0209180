// SPDX-License-Identifier: MIT
#include "tiff_handle.h"

#include <cstdarg>

namespace exifkeep {
namespace {

constexpr tmsize_t maxAllocation = tmsize_t{1} << 30;

// Returns 1 so that the process-wide handlers are not called.
int swallow(TIFF*, void*, const char*, const char*, va_list) {
  return 1;
}

template <class File>
toff_t seekFile(thandle_t handle, toff_t offset, int whence) {
  File& file = *static_cast<File*>(handle);
  if (whence == SEEK_CUR) offset += file.position();
  if (whence == SEEK_END) offset += file.size();
  file.moveTo(offset);
  return offset;
}

template <class File>
tmsize_t readFile(thandle_t handle, void* bytes, tmsize_t count) {
  return count > 0 ? static_cast<tmsize_t>(
                         static_cast<File*>(handle)->read(bytes, static_cast<size_t>(count)))
                   : 0;
}

tmsize_t writeFile(thandle_t handle, void* bytes, tmsize_t count) {
  const bool written = static_cast<TiffFront*>(handle)->write(bytes, static_cast<size_t>(count));
  return written ? count : -1;
}

tmsize_t refuseWriting(thandle_t, void*, tmsize_t) {
  return -1;
}

template <class File>
toff_t fileSize(thandle_t handle) {
  return static_cast<File*>(handle)->size();
}

int keepOpen(thandle_t) {
  return 0;
}

// "m" in the mode disables memory mapping.
template <class File>
TiffHandle open(File& file, const char* mode, TIFFReadWriteProc write) {
  const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                             TIFFOpenOptionsFree);
  if (!options) return nullptr;
  TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), maxAllocation);
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), swallow, nullptr);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), swallow, nullptr);
  file.moveTo(0);
  return TiffHandle(TIFFClientOpenExt("picture", mode, &file, readFile<File>, write, seekFile<File>,
                                      keepOpen, fileSize<File>, nullptr, nullptr, options.get()));
}

}  // namespace

TiffHandle openTiff(TiffSource& source) {
  return open(source, "rm", refuseWriting);
}

TiffHandle createTiff(TiffFront& front) {
  return open(front, "wlm", writeFile);
}

}  // namespace exifkeep
