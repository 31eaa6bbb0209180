/// @file
/// PRaster: a picture in memory, shared by hosts and library. 1, 8 or 24 bits a pixel, stored as a
/// device-independent bitmap: rows from the bottom up, each padded to 4 bytes, colours as blue,
/// green, red. No operation throws; those that can fail return 0. An object belongs to one thread
/// at a time.
///
/// A host makes a picture with CreateImage, fills it through row() and palette(), and hands it to
/// the library by pointer.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// Where an image's parts lie in memory, as the picture codec takes it. Valid until the image is
/// changed, handed over or destroyed. `bits` is the bottom row; the row above it follows `stride`
/// bytes later. `palette` has 2 entries (1 bit), 256 (8 bits) or is null (24 bits).
struct tagLmmInfo {
  BITMAPINFOHEADER* header = nullptr;  ///< Size, depth and resolution.
  RGBQUAD* palette = nullptr;          ///< The colours of a palette image.
  BYTE* bits = nullptr;                ///< The bottom row.
  size_t stride = 0;                   ///< Bytes from a row to the one above it.
  unsigned* lostRows = nullptr;        ///< Set by the codec when it decodes: see PRaster::lostRows.
};

/// A picture in memory, or nothing (empty).
class EXIFKEEP_PLATFORM_API PRaster {
 public:
  /// Called with (done, from, to) while an operation runs; its result is ignored. May be null.
  using Progress = int (*)(int, int, int);

  /// @{
  /// Type codes. Any other code is refused by CreateImage.
  static constexpr int type1Bit = 0;
  static constexpr int type24Bit = 1;
  static constexpr int type8Bit = 5;
  /// @}

  /// Width times height is at most this (24 bits: 768 MiB); neither may be 0.
  static constexpr uint64_t maxPixels = uint64_t{1} << 28;

  /// @cond
  struct Image;
  struct EXIFKEEP_PLATFORM_API ImageDelete {
    void operator()(Image* image) const noexcept;
  };
  /// @endcond
  /// An image without its object: owns the pixels, the palette and the resolution.
  using Data = std::unique_ptr<Image, ImageDelete>;

  /// A new object is empty.
  PRaster() noexcept;
  /// @{
  /// The image moves with its object, and the other object is empty afterwards. There is no copy;
  /// for one, see CopyImage.
  PRaster(PRaster&& other) noexcept;
  PRaster& operator=(PRaster&& other) noexcept;
  PRaster(const PRaster&) = delete;
  PRaster& operator=(const PRaster&) = delete;
  /// @}
  /// Frees the image.
  virtual ~PRaster();

  /// 1 when the object holds no image, else 0.
  int IsEmpty() const noexcept;

  /// Frees the image; the object is empty afterwards. The argument is not used.
  void DeleteImage(int = 1) noexcept;

  /// Makes a black image (level 0 everywhere) of the type and size; an image held before is freed
  /// first. Resolution in dots per metre, 0 when unknown. Palettes start as a grey ramp (1 bit:
  /// black, white); `coloursUsed` only goes into the information header. The unnamed arguments are
  /// not used. Returns 1, or 0 with the object empty: unknown type, a size of 0 or over maxPixels,
  /// no memory.
  int CreateImage(int type, unsigned width, unsigned height, int = 0, uintptr_t coloursUsed = 0,
                  unsigned dpmX = 0, unsigned dpmY = 0, int = 15, int = 0, int = 0) noexcept;

  /// The type code for a number of bits a pixel: 1, 8 or 24; -1 for any other number.
  static int GetImageType(int bits, int) noexcept;
  /// The object's type code; -1 when it is empty.
  int GetImageType() const noexcept;

  /// @{
  /// Size in pixels and resolution in dots per metre; 0 when the object is empty.
  unsigned GetImageWidth() const noexcept;
  unsigned GetImageHeight() const noexcept;
  unsigned GetDpmX() const noexcept;
  unsigned GetDpmY() const noexcept;
  /// @}

  /// A resolution in dots per metre as dots per inch, rounded to nearest.
  static constexpr unsigned dotsPerInch(unsigned dotsPerMetre) noexcept {
    return static_cast<unsigned>((uint64_t{dotsPerMetre} * 254 + 5000) / 10000);
  }

  /// The image's information header (positive height: bottom-up); null when the object is empty.
  const BITMAPINFOHEADER* GetBIH() const noexcept;

  /// The value of the pixel in column x and row y, row 0 at the top: 0x00BBGGRR (24 bits), the
  /// level or palette index (8 bits), 0 or 255 (1 bit). 0 outside the image. The pointer is not
  /// used.
  unsigned GetPixel(int x, int y, void* = nullptr) const noexcept;

  /// Sets a pixel to a value as GetPixel returns it; bits above those of the depth are ignored, 1
  /// bit is set by any value that is not 0. Does nothing outside the image.
  void SetPixel(int x, int y, uint64_t value) noexcept;

  /// Gives every pixel the value, as SetPixel takes it.
  void Clear(uint64_t value) noexcept;

  /// Fills this image with the source, scaled to this image's size, and takes over the source's
  /// palette. Colour and grey: the average of the covered area along an axis that shrinks, linear
  /// interpolation along one that grows. Palette images whose palette is no grey ramp, and 1 bit:
  /// the nearest pixel. The other arguments are not used. Returns 1, or 0 with this image
  /// unchanged: one of them empty, different types, no memory.
  int RescaleImage(const PRaster& source, Progress = nullptr, int = 0, int = 100) noexcept;

  /// Turns the image into one of 24 bits, through its palette; resolution stays. Returns 1, or 0
  /// with the image unchanged: empty, no memory.
  int ConvertTo24bit(Progress = nullptr, int = 0, int = 100) noexcept;

  /// Copies pixels and palette from an image of the same type and size. Returns 1, or 0 with this
  /// image unchanged when type or size differ or one of them is empty.
  int CopyImage(const PRaster& source) noexcept;

  /// Hands out the image without copying; the object is empty afterwards. Null when it was empty.
  Data Detach() noexcept;
  /// Takes an image that Detach handed out; one held before is freed.
  void Attach(Data image) noexcept;

  /// Describes the image to the picture codec; every field null or 0 when the object is empty.
  void GetLmmInfo(tagLmmInfo& info) noexcept;
  /// A number handed to the codec beside the record: 0, the record is complete.
  unsigned GetLmmOffset() const noexcept;
  /// Images here are always one block in memory: nothing to do. Returns 1.
  int EnableBlock(int, int) noexcept;

  /// Uses the colours of a GDI palette; entries beyond its end keep their colour, 24-bit images
  /// ignore it. With `own` not 0 the palette is the image's to delete, in every case. Returns 1, or
  /// 0 when the object is empty or the handle is no palette.
  int SetPalette(HPALETTE palette, int own) noexcept;

  /// @{
  /// As GetImageWidth and GetImageHeight.
  unsigned width() const noexcept { return GetImageWidth(); }
  unsigned height() const noexcept { return GetImageHeight(); }
  /// @}
  /// 1, 8 or 24; 0 for an empty object.
  unsigned bitsPerPixel() const noexcept;
  /// @{
  /// A row's bytes, for direct access. row(0) is the top row; a row outside the image is empty. A
  /// row has ceil(width * bits / 8) bytes: blue, green, red (24 bits), one level or palette index a
  /// byte (8 bits), the leftmost pixel in the highest bit (1 bit).
  std::span<BYTE> row(unsigned y) noexcept;
  std::span<const BYTE> row(unsigned y) const noexcept;
  /// @}

  /// @{
  /// The palette: 2 entries (1 bit), 256 (8 bits); null for 24 bits and for an empty object.
  RGBQUAD* palette() noexcept;
  const RGBQUAD* palette() const noexcept;
  /// @}
  /// Whether every entry of the palette is the grey of its own level (0 to white).
  bool hasGreyPalette() const noexcept;

  /// Rows of which pixels are missing or wrong because the file that was decoded is damaged or cut
  /// short; 0 for a whole picture. The other rows are as stored. Copies of the image, and one
  /// turned into 24 bits, keep the number; scaled ones do not.
  unsigned lostRows() const noexcept;

  /// Sets the resolution in dots per metre, 0 for unknown. Does nothing when the object is empty.
  void setResolution(unsigned dpmX, unsigned dpmY) noexcept;

 private:
  Data image_;
};
