// SPDX-License-Identifier: MIT
// Scaling is in raster_scaling.cpp.
#include <praster.h>

#include <cstring>
#include <new>

#include "failure_switch.h"
#include "palette_row.h"
#include "raster_image.h"
#include "raster_scaling.h"

namespace {

constexpr int bitsOfType(int type) {
  switch (type) {
    case PRaster::type1Bit: return 1;
    case PRaster::type8Bit: return 8;
    case PRaster::type24Bit: return 24;
    default: return 0;
  }
}

constexpr bool isAllowedSize(unsigned width, unsigned height) {
  return width != 0 && height != 0 && uint64_t{width} * height <= PRaster::maxPixels;
}

constexpr size_t strideOf(unsigned width, int bits) {
  return (size_t{width} * static_cast<unsigned>(bits) + 31) / 32 * 4;
}

void fillRow24(BYTE* row, unsigned width, uint64_t value) {
  for (unsigned x = 0; x < width; ++x, row += 3) {
    row[0] = static_cast<BYTE>(value >> 16);
    row[1] = static_cast<BYTE>(value >> 8);
    row[2] = static_cast<BYTE>(value);
  }
}

PRaster::Data makeImage(int bits, unsigned width, unsigned height) noexcept {
  if (bits == 0 || !isAllowedSize(width, height)) return nullptr;
  if (exifkeep::failsNow(exifkeep::PlatformCall::allocate)) return nullptr;
  PRaster::Data image(new (std::nothrow) PRaster::Image);
  if (!image) return nullptr;
  image->stride = strideOf(width, bits);
  image->bits.reset(static_cast<BYTE*>(std::calloc(height, image->stride)));
  if (!image->bits) return nullptr;
  BITMAPINFOHEADER& header = image->header;
  header.biSize = sizeof header;
  header.biWidth = static_cast<LONG>(width);
  header.biHeight = static_cast<LONG>(height);
  header.biPlanes = 1;
  header.biBitCount = static_cast<WORD>(bits);
  const uint64_t size = image->stride * height;
  header.biSizeImage = size <= 0xFFFFFFFF ? static_cast<DWORD>(size) : 0;
  for (unsigned i = 0; i < image->paletteSize(); ++i)
    image->colours[i] = exifkeep::greyOf(i, image->paletteSize());
  return image;
}

}  // namespace

void PRaster::ImageDelete::operator()(Image* image) const noexcept {
  delete image;
}

PRaster::PRaster() noexcept = default;
PRaster::PRaster(PRaster&& other) noexcept = default;
PRaster& PRaster::operator=(PRaster&& other) noexcept = default;
PRaster::~PRaster() = default;

int PRaster::IsEmpty() const noexcept {
  return !image_;
}

void PRaster::DeleteImage(int) noexcept {
  image_.reset();
}

int PRaster::CreateImage(int type, unsigned width, unsigned height, int, uintptr_t coloursUsed,
                         unsigned dpmX, unsigned dpmY, int, int, int) noexcept {
  image_.reset();
  image_ = makeImage(bitsOfType(type), width, height);
  if (!image_) return 0;
  image_->header.biClrUsed = static_cast<DWORD>(coloursUsed);
  setResolution(dpmX, dpmY);
  return 1;
}

int PRaster::GetImageType(int bits, int) noexcept {
  for (int type : {type1Bit, type8Bit, type24Bit})
    if (bitsOfType(type) == bits) return type;
  return -1;
}

int PRaster::GetImageType() const noexcept {
  return GetImageType(static_cast<int>(bitsPerPixel()), 0);
}

unsigned PRaster::GetImageWidth() const noexcept {
  return image_ ? image_->width() : 0;
}
unsigned PRaster::GetImageHeight() const noexcept {
  return image_ ? image_->height() : 0;
}
unsigned PRaster::bitsPerPixel() const noexcept {
  return image_ ? image_->depth() : 0;
}

unsigned PRaster::lostRows() const noexcept {
  return image_ ? image_->lostRows : 0;
}

unsigned PRaster::GetDpmX() const noexcept {
  return image_ ? static_cast<unsigned>(image_->header.biXPelsPerMeter) : 0;
}

unsigned PRaster::GetDpmY() const noexcept {
  return image_ ? static_cast<unsigned>(image_->header.biYPelsPerMeter) : 0;
}

void PRaster::setResolution(unsigned dpmX, unsigned dpmY) noexcept {
  if (!image_) return;
  image_->header.biXPelsPerMeter = static_cast<LONG>(dpmX);
  image_->header.biYPelsPerMeter = static_cast<LONG>(dpmY);
}

const BITMAPINFOHEADER* PRaster::GetBIH() const noexcept {
  return image_ ? &image_->header : nullptr;
}

unsigned PRaster::GetPixel(int x, int y, void*) const noexcept {
  if (!image_ || !image_->contains(x, y)) return 0;
  const unsigned column = static_cast<unsigned>(x);
  const BYTE* row = image_->row(static_cast<unsigned>(y));
  if (image_->depth() == 1) return exifkeep::bitAt(row, column) * 255;
  if (image_->depth() == 8) return row[column];
  const BYTE* pixel = row + size_t{column} * 3;
  return static_cast<unsigned>(pixel[0] << 16 | pixel[1] << 8 | pixel[2]);
}

void PRaster::SetPixel(int x, int y, uint64_t value) noexcept {
  if (!image_ || !image_->contains(x, y)) return;
  const unsigned column = static_cast<unsigned>(x);
  BYTE* row = image_->row(static_cast<unsigned>(y));
  if (image_->depth() == 1) {
    const int mask = 0x80 >> (column % 8);
    BYTE& octet = row[column / 8];
    octet = static_cast<BYTE>(value != 0 ? octet | mask : octet & ~mask);
  } else if (image_->depth() == 8) {
    row[column] = static_cast<BYTE>(value);
  } else {
    fillRow24(row + size_t{column} * 3, 1, value);
  }
}

void PRaster::Clear(uint64_t value) noexcept {
  if (!image_) return;
  const size_t size = image_->stride * image_->height();
  if (image_->depth() == 1)
    std::memset(image_->bits.get(), value != 0 ? 0xFF : 0, size);
  else if (image_->depth() == 8 || (value & 0xFFFFFF) == 0)
    std::memset(image_->bits.get(), static_cast<BYTE>(value), size);
  else
    for (unsigned y = 0; y < height(); ++y) fillRow24(image_->row(y), width(), value);
}

int PRaster::RescaleImage(const PRaster& source, Progress, int, int) noexcept {
  if (!image_ || !source.image_ || image_->depth() != source.image_->depth()) return 0;
  if (image_->sameShapeAs(*source.image_)) return CopyImage(source);
  const bool blends =
      source.image_->depth() != 1 && (source.image_->depth() == 24 || source.hasGreyPalette());
  if (blends) {
    if (!exifkeep::scaleBlended(*source.image_, *image_)) return 0;
  } else {
    exifkeep::scaleNearest(*source.image_, *image_);
  }
  image_->colours = source.image_->colours;
  return 1;
}

int PRaster::ConvertTo24bit(Progress, int, int) noexcept {
  if (!image_) return 0;
  if (image_->depth() == 24) return 1;
  Data converted = makeImage(24, width(), height());
  if (!converted) return 0;
  for (unsigned y = 0; y < height(); ++y)
    exifkeep::expandRow(image_->row(y), width(), image_->depth(), palette(), converted->row(y));
  converted->header.biXPelsPerMeter = image_->header.biXPelsPerMeter;
  converted->header.biYPelsPerMeter = image_->header.biYPelsPerMeter;
  converted->lostRows = image_->lostRows;
  image_ = std::move(converted);
  return 1;
}

int PRaster::CopyImage(const PRaster& source) noexcept {
  if (!image_ || !source.image_ || !image_->sameShapeAs(*source.image_)) return 0;
  if (&source == this) return 1;
  std::memcpy(image_->bits.get(), source.image_->bits.get(), image_->stride * height());
  image_->colours = source.image_->colours;
  image_->lostRows = source.image_->lostRows;
  return 1;
}

PRaster::Data PRaster::Detach() noexcept {
  return std::move(image_);
}

void PRaster::Attach(Data image) noexcept {
  image_ = std::move(image);
}

void PRaster::GetLmmInfo(tagLmmInfo& info) noexcept {
  info = {};
  if (!image_) return;
  info = {&image_->header, palette(), image_->bits.get(), image_->stride, &image_->lostRows};
}

unsigned PRaster::GetLmmOffset() const noexcept {
  return 0;
}

int PRaster::EnableBlock(int, int) noexcept {
  return 1;
}

int PRaster::SetPalette(HPALETTE palette, int own) noexcept {
  PALETTEENTRY entries[256];
  const UINT count = palette ? GetPaletteEntries(palette, 0, 256, entries) : 0;
  if (palette && own != 0) DeleteObject(palette);
  if (!image_ || count == 0) return 0;
  for (unsigned i = 0; i < count && i < image_->paletteSize(); ++i)
    image_->colours[i] = {entries[i].peBlue, entries[i].peGreen, entries[i].peRed, 0};
  return 1;
}

std::span<BYTE> PRaster::row(unsigned y) noexcept {
  if (y >= height()) return {};
  return {image_->row(y), image_->rowBytes()};
}

std::span<const BYTE> PRaster::row(unsigned y) const noexcept {
  if (y >= height()) return {};
  return {image_->row(y), image_->rowBytes()};
}

RGBQUAD* PRaster::palette() noexcept {
  return image_ && image_->paletteSize() != 0 ? image_->colours.data() : nullptr;
}

const RGBQUAD* PRaster::palette() const noexcept {
  return image_ && image_->paletteSize() != 0 ? image_->colours.data() : nullptr;
}

bool PRaster::hasGreyPalette() const noexcept {
  return palette() && exifkeep::isGreyRamp({palette(), image_->paletteSize()});
}
