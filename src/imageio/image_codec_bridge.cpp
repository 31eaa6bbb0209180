// SPDX-License-Identifier: MIT
#include "imageio/image_codec_bridge.h"

#include <praster.h>
#include <pxcodec32.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "system/global_block.h"
#include "system/path.h"

namespace exifkeep {
namespace {

// The codec's list of formats: records of 52 bytes, of which the first 16 are used.
constexpr size_t recordSize = 52;
constexpr size_t usedSize = sizeof(CodecFormatEntry);
constexpr size_t blockSize = recordSize * ImageCodecBridge::maxFormats;
static_assert(usedSize == 16 && blockSize == 1300);

struct PaletteDelete {
  void operator()(HPALETTE palette) const { DeleteObject(palette); }
};
using Palette = std::unique_ptr<std::remove_pointer_t<HPALETTE>, PaletteDelete>;

HWND ownerWindow() {
  const CWnd* window = AfxGetMainWnd();
  return window ? window->m_hWnd : nullptr;
}

bool hasDot(std::string_view path) {
  return path.find('.') != std::string_view::npos;
}

bool createImage(PRaster& image, const BITMAPINFOHEADER& header) {
  return image.CreateImage(
      PRaster::GetImageType(header.biBitCount, 0), static_cast<unsigned>(header.biWidth),
      static_cast<unsigned>(header.biHeight), 0, header.biClrUsed,
      static_cast<unsigned>(header.biXPelsPerMeter), static_cast<unsigned>(header.biYPelsPerMeter));
}

bool readPixels(const char* path, PRaster& image) {
  tagLmmInfo info;
  image.GetLmmInfo(info);
  return AllReadDIBImg(path, &info, image.GetLmmOffset(), ImageCodecBridge::codecProgress) != 0;
}

// The codec cannot handle exceptions.
int receive(void* sink, const void* bytes, size_t count) noexcept {
  try {
    return static_cast<PictureSink*>(sink)->take({static_cast<const uint8_t*>(bytes), count});
  } catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
  }
}

}  // namespace

bool ImageCodecBridge::loadCapabilities() {
  const GlobalBlock block(blockSize);
  if (!block) return false;
  const int16_t count = AllGetReadWriteCaps(ownerWindow(), block.handle());
  formatCount = std::clamp<int16_t>(count, 0, maxFormats);
  if (formatCount == 0) return false;
  const BlockLock lock(block);
  if (!lock.bytes()) {
    formatCount = 0;
    return false;
  }
  const uint8_t* record = lock.bytes();
  for (int i = 0; i < formatCount; ++i, record += recordSize)
    std::memcpy(&formats[static_cast<size_t>(i)], record, usedSize);
  return true;
}

int ImageCodecBridge::findFormat(std::string_view extension) const {
  const std::string wanted(extension);
  for (int i = 0; i < formatCount; ++i) {
    char known[sizeof(CodecFormatEntry::extension) + 1] = {};
    std::memcpy(known, formats[static_cast<size_t>(i)].extension, sizeof known - 1);
    if (lstrcmpiA(known, wanted.c_str()) == 0) return i;
  }
  return -1;
}

bool ImageCodecBridge::canWrite(std::string_view extension) const {
  const int index = findFormat(extension);
  return index >= 0 && formats[static_cast<size_t>(index)].writable != 0;
}

std::unique_ptr<PRasterBlock> ImageCodecBridge::loadImageFile(const char* path,
                                                              uint64_t maxPixels) const {
  BITMAPINFOHEADER header = {};
  if (!hasDot(path) || AllReadHeader(path, &header) == 0) return nullptr;
  if (static_cast<uint64_t>(header.biWidth) * static_cast<uint64_t>(header.biHeight) > maxPixels)
    return nullptr;
  Palette palette(AllReadPalette(path));
  auto image = std::make_unique<PRasterBlock>();
  if (!createImage(*image, header) || !readPixels(path, *image)) return nullptr;
  if (palette) image->SetPalette(palette.release(), 1);
  return image;
}

bool ImageCodecBridge::saveImageFile(const char* path, PRaster& image, PictureSink& sink) const {
  if (!hasDot(path) || !canWrite(extensionOf(path))) {
    showUnwritable();
    return false;
  }
  image.EnableBlock(0, 256);
  tagLmmInfo info;
  image.GetLmmInfo(info);
  SetLastError(ERROR_SUCCESS);
  return AllSendDIBImg(path, &info, image.GetLmmOffset(), codecProgress, receive, &sink) != 0;
}

void ImageCodecBridge::showUnwritable() {
  AfxMessageBox(AFX_IDP_FAILED_TO_SAVE_DOC, MB_OK, 0);
}

int ImageCodecBridge::codecProgress(int, int, int) {
  return 0;
}

}  // namespace exifkeep
