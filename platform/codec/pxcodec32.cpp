// SPDX-License-Identifier: MIT
// Each call opens its file, finds the format and lets it do the work.
#include <pxcodec32.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "failure_switch.h"
#include "picture_format.h"

namespace exifkeep {
namespace {

struct NamedFormat {
  const char* extension;
  const PictureFormat* format;
};

constexpr NamedFormat namedFormats[] = {
    {"jpg", &jpegFormat}, {"jpeg", &jpegFormat}, {"jpe", &jpegFormat},
    {"tif", &tiffFormat}, {"tiff", &tiffFormat}, {"png", &pngFormat},
};

// All formats can be read and written.
constexpr auto capabilities = [] {
  std::array<CodecCapability, std::size(namedFormats)> records = {};
  for (size_t i = 0; i < records.size(); ++i) {
    std::ranges::copy(std::string_view(namedFormats[i].extension), records[i].extension);
    records[i].readable = records[i].writable = 1;
  }
  return records;
}();

// For writing: by the extension. Null also if the image is not valid.
const PictureFormat* formatFor(const char* path, const PictureRows& rows) {
  const char* dot = std::strrchr(path, '.');
  if (!dot || !rows.areValid()) return nullptr;
  for (const NamedFormat& named : namedFormats)
    if (lstrcmpiA(dot + 1, named.extension) == 0) return named.format;
  return nullptr;
}

// For reading: by the first bytes. Resets the position to the start.
const PictureFormat* formatOfContent(PictureReading& file) {
  BYTE start[16];
  const size_t count = file.read(start, sizeof start);
  file.moveTo(0);
  for (const NamedFormat& named : namedFormats)
    if (named.format->recognizes(start, count)) return named.format;
  return nullptr;
}

bool describe(const char* path, PictureDescription& picture) {
  PictureReading file(path);
  if (!file.isOpen()) return false;
  const PictureFormat* format = formatOfContent(file);
  return format && format->describe(file, picture) && !file.hasFailed();
}

bool decode(const char* path, const PictureRows& rows) {
  PictureReading file(path);
  if (!file.isOpen()) return false;
  const PictureFormat* format = formatOfContent(file);
  return format && format->decode(file, rows) && !file.hasFailed();
}

bool send(const char* path, const PictureRows& rows, const PictureOutput& output) {
  const PictureFormat* format = formatFor(path, rows);
  return format && format->encode(output, rows);
}

int writeToFile(void* file, const void* bytes, size_t count) {
  DWORD written = 0;  // no format sends more than 4 GiB at once
  return WriteFile(file, bytes, static_cast<DWORD>(count), &written, nullptr) && written == count;
}

// Deletes an incomplete file.
bool save(const char* path, const PictureRows& rows) {
  const PictureFormat* format = formatFor(path, rows);
  if (!format) return false;
  const HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool isEncoded = format->encode({writeToFile, file}, rows);
  const DWORD error = GetLastError();
  if (CloseHandle(file) && isEncoded) return true;
  DeleteFileA(path);
  if (!isEncoded) SetLastError(error);
  return false;
}

HPALETTE makePalette(const PictureDescription& picture) {
  struct {
    LOGPALETTE head;
    PALETTEENTRY rest[255];
  } palette = {};
  palette.head.palVersion = 0x300;
  palette.head.palNumEntries = 256;
  BYTE* entry = reinterpret_cast<BYTE*>(palette.head.palPalEntry);
  for (const RGBQUAD& colour : picture.palette) {
    const PALETTEENTRY converted = {colour.rgbRed, colour.rgbGreen, colour.rgbBlue, 0};
    std::memcpy(entry, &converted, sizeof converted);
    entry += sizeof converted;
  }
  return CreatePalette(&palette.head);
}

// Runs one call so that no exception leaves it and the failure switch can make it fail. The picture
// libraries do not report that memory ran out, but errno does.
template <typename Result, typename Body>
Result guarded(Result failure, Body body) noexcept {
  if (failsNow(PlatformCall::codec)) return failure;
  errno = 0;
  Result result = failure;
  try {
    result = body();
  } catch (...) {
    errno = ENOMEM;
  }
  if (result == failure && errno == ENOMEM) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return result;
}

}  // namespace
}  // namespace exifkeep

using namespace exifkeep;

short AllGetReadWriteCaps(HWND, HGLOBAL block) {
  return guarded(short{0}, [&]() -> short {
    void* records = GlobalLock(block);
    if (!records) return 0;
    std::memcpy(records, &capabilities, sizeof capabilities);
    GlobalUnlock(block);
    return static_cast<short>(std::size(namedFormats));
  });
}

int AllReadHeader(const char* path, BITMAPINFOHEADER* header) {
  return guarded(0, [&] {
    PictureDescription picture;
    if (!describe(path, picture)) return 0;
    *header = {};
    header->biSize = sizeof *header;
    header->biWidth = static_cast<LONG>(picture.width);
    header->biHeight = static_cast<LONG>(picture.height);
    header->biPlanes = 1;
    header->biBitCount = static_cast<WORD>(picture.bits);
    header->biXPelsPerMeter = static_cast<LONG>(picture.dpmX);
    header->biYPelsPerMeter = static_cast<LONG>(picture.dpmY);
    header->biClrUsed = picture.coloursUsed;
    return 1;
  });
}

HPALETTE AllReadPalette(const char* path) {
  return guarded(HPALETTE{}, [&] {
    PictureDescription picture;
    if (!describe(path, picture) || picture.coloursUsed == 0) return HPALETTE{};
    return makePalette(picture);
  });
}

int AllReadDIBImg(const char* path, const tagLmmInfo* image, unsigned, CodecProgress progress) {
  return guarded(0, [&] {
    const PictureRows rows(*image, progress);
    rows.reportLost(0);
    return rows.areValid() && decode(path, rows);
  });
}

int AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned, CodecProgress progress) {
  return guarded(0, [&] { return save(path, PictureRows(*image, progress)); });
}

int AllSendDIBImg(const char* path, const tagLmmInfo* image, unsigned, CodecProgress progress,
                  CodecReceive receive, void* receiver) {
  return guarded(0, [&] { return send(path, PictureRows(*image, progress), {receive, receiver}); });
}
