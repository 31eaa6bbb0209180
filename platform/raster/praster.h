// SPDX-License-Identifier: MIT
/// @file
/// PRaster: a picture in memory, used by hosts and library. It has 1, 8 or 24 bits per pixel and is
/// stored as a device-independent bitmap: rows from the bottom up, each padded to 4 bytes, colours
/// as blue, green, red. No operation throws; those that can fail return 0. Only one thread at a
/// time may use an object.
///
/// A host creates a picture with CreateImage, fills it through row() and palette(), and passes a
/// pointer to the library.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// Describes an image in memory to the picture codec. Valid until the image is changed, detached or
/// destroyed. `bits` is the bottom row; the row above it begins `stride` bytes later. `palette` has
/// 2 entries (1 bit) or 256 (8 bits), or is null (24 bits).
struct tagLmmInfo {
  BITMAPINFOHEADER* header = nullptr;  ///< Size, depth and resolution.
  RGBQUAD* palette = nullptr;          ///< The colours of a palette image.
  BYTE* bits = nullptr;                ///< The bottom row.
  size_t stride = 0;                   ///< Bytes from one row to the one above it.
  unsigned* lostRows = nullptr;        ///< Set by the codec when decoding: see PRaster::lostRows.
};

/// A picture in memory, or empty.
class EXIFKEEP_PLATFORM_API PRaster {
 public:
  /// A function called with (done, from, to) during an operation. Its result is ignored.
  using Progress = int (*)(int, int, int);

  /// @{
  /// Type codes. CreateImage rejects all others.
  static constexpr int type1Bit = 0;
  static constexpr int type24Bit = 1;
  static constexpr int type8Bit = 5;
  /// @}

  /// The maximum of width times height (768 MiB with 24 bits). Neither may be 0.
  static constexpr uint64_t maxPixels = uint64_t{1} << 28;

  /// @cond
  struct Image;
  struct EXIFKEEP_PLATFORM_API ImageDelete {
    void operator()(Image* image) const noexcept;
  };
  /// @endcond
  /// A detached image: owns the pixels, the palette and the resolution.
  using Data = std::unique_ptr<Image, ImageDelete>;

  /// A new object is empty.
  PRaster() noexcept;
  /// @{
  /// Moving takes the image and leaves the other object empty. To copy an image, see CopyImage.
  PRaster(PRaster&& other) noexcept;
  PRaster& operator=(PRaster&& other) noexcept;
  PRaster(const PRaster&) = delete;
  PRaster& operator=(const PRaster&) = delete;
  /// @}
  /// Frees the image.
  virtual ~PRaster();

  /// 1 if the object has no image, else 0.
  int IsEmpty() const noexcept;

  /// Frees the image; the object is empty afterwards. The argument is not used.
  void DeleteImage(int = 1) noexcept;

  /// Creates a black image (all pixels 0) after freeing the old one. The resolution is in dots per
  /// metre, 0 if unknown. The palette is a grey ramp (black and white with 1 bit). `coloursUsed` is
  /// only stored in the information header. Unnamed arguments are not used. Returns 1, or 0 with
  /// the object empty: unknown type, a size of 0 or above maxPixels, no memory.
  int CreateImage(int type, unsigned width, unsigned height, int = 0, uintptr_t coloursUsed = 0,
                  unsigned dpmX = 0, unsigned dpmY = 0, int = 15, int = 0, int = 0) noexcept;

  /// The type code for 1, 8 or 24 bits per pixel; -1 for any other number.
  static int GetImageType(int bits, int) noexcept;
  /// The object's type code; -1 if it is empty.
  int GetImageType() const noexcept;

  /// @{
  /// Size in pixels and resolution in dots per metre; 0 if the object is empty.
  unsigned GetImageWidth() const noexcept;
  unsigned GetImageHeight() const noexcept;
  unsigned GetDpmX() const noexcept;
  unsigned GetDpmY() const noexcept;
  /// @}

  /// A resolution in dots per metre as dots per inch, rounded to nearest.
  static constexpr unsigned dotsPerInch(unsigned dotsPerMetre) noexcept {
    return static_cast<unsigned>((uint64_t{dotsPerMetre} * 254 + 5000) / 10000);
  }

  /// The image's information header, with a positive height (bottom-up); null if the object is
  /// empty.
  const BITMAPINFOHEADER* GetBIH() const noexcept;

  /// The value of a pixel, with row 0 at the top: 0x00BBGGRR (24 bits), the level or palette index
  /// (8 bits), 0 or 255 (1 bit). 0 outside the image. The pointer is not used.
  unsigned GetPixel(int x, int y, void* = nullptr) const noexcept;

  /// Sets a pixel to a value as returned by GetPixel. Excess bits are ignored, except that a 1-bit
  /// pixel is set by any value other than 0. Does nothing outside the image.
  void SetPixel(int x, int y, uint64_t value) noexcept;

  /// Sets all pixels to a value, as SetPixel does.
  void Clear(uint64_t value) noexcept;

  /// Fills this image with the source scaled to this image's size, and copies the source's palette.
  /// Colour and grey images are averaged along an axis that shrinks and interpolated linearly along
  /// one that grows. For 1-bit images and palettes other than a grey ramp, the nearest pixel is
  /// used. The other arguments are not used. Returns 1, or 0 with this image unchanged: one of them
  /// is empty, different types, no memory.
  int RescaleImage(const PRaster& source, Progress = nullptr, int = 0, int = 100) noexcept;

  /// Converts the image to 24 bits, keeping its resolution. Returns 1, or 0 with the image
  /// unchanged: empty, no memory.
  int ConvertTo24bit(Progress = nullptr, int = 0, int = 100) noexcept;

  /// Copies pixels and palette from an image of the same type and size. Returns 1, or 0 with this
  /// image unchanged if types or sizes differ or one of them is empty.
  int CopyImage(const PRaster& source) noexcept;

  /// Releases the image without copying, leaving the object empty. Null if it was empty.
  Data Detach() noexcept;
  /// Takes an image released by Detach, after freeing the old one.
  void Attach(Data image) noexcept;

  /// Describes the image to the picture codec. All fields are null or 0 if the object is empty.
  void GetLmmInfo(tagLmmInfo& info) noexcept;
  /// A number to pass to the codec with the description; always 0.
  unsigned GetLmmOffset() const noexcept;
  /// Does nothing, as images are always one block in memory. Returns 1.
  int EnableBlock(int, int) noexcept;

  /// Copies the colours of a GDI palette; a shorter palette leaves the other entries unchanged, and
  /// 24-bit images ignore it. If `own` is not 0, the palette is deleted in any case. Returns 1, or
  /// 0 if the object is empty or the handle is not a palette.
  int SetPalette(HPALETTE palette, int own) noexcept;

  /// @{
  /// As GetImageWidth and GetImageHeight.
  unsigned width() const noexcept { return GetImageWidth(); }
  unsigned height() const noexcept { return GetImageHeight(); }
  /// @}
  /// 1, 8 or 24; 0 for an empty object.
  unsigned bitsPerPixel() const noexcept;
  /// @{
  /// Direct access to the bytes of a row. row(0) is the top row; a row outside the image is empty.
  /// A row has ceil(width * bits / 8) bytes: blue, green, red (24 bits), a level or palette index
  /// (8 bits), or eight pixels with the leftmost in the highest bit (1 bit).
  std::span<BYTE> row(unsigned y) noexcept;
  std::span<const BYTE> row(unsigned y) const noexcept;
  /// @}

  /// @{
  /// The palette of 2 (1 bit) or 256 entries (8 bits); null for 24 bits and for an empty object.
  RGBQUAD* palette() noexcept;
  const RGBQUAD* palette() const noexcept;
  /// @}
  /// Whether the palette is a grey ramp from black to white.
  bool hasGreyPalette() const noexcept;

  /// The number of rows with missing or wrong pixels because the decoded file was damaged or
  /// truncated; 0 if the picture is complete. Copies of the image and conversion to 24 bits keep
  /// the number, scaling does not.
  unsigned lostRows() const noexcept;

  /// Sets the resolution in dots per metre, 0 if unknown. Does nothing if the object is empty.
  void setResolution(unsigned dpmX, unsigned dpmY) noexcept;

 private:
  Data image_;
};
