/// @file
/// The picture codec: pictures in files to and from images in memory. All functions take 8-bit
/// paths, report failure as 0 (or null), throw nothing, print nothing and may be called from any
/// thread.
///
/// Reading goes by the first bytes of a file, writing by the extension of its name. Formats: JPEG
/// (jpg, jpeg, jpe), TIFF (tif, tiff), PNG (png). Orientation tags are ignored: pixels come as they
/// are stored. A picture has at most PRaster::maxPixels pixels, 2^20 on a side. Transparency
/// becomes a white background.
///
/// A JPEG picture whose data is damaged or cut short is delivered as far as it can be decoded, and
/// PRaster::lostRows (tagLmmInfo::lostRows) tells how many rows that leaves out; one of which
/// nothing can be decoded is a failure. A TIFF or PNG picture that is damaged or cut short is a
/// failure, as is any file that claims more than 64 MiB of pixels and is over 2048 times smaller.
///
/// Written are: JPEG, baseline 4:2:2 of quality 90, always three components; TIFF, one uncompressed
/// 8-bit RGB strip at the end of the file; PNG, the image's own depth.
#pragma once

#include <platform_api.h>
#include <praster.h>
#include <windows.h>

extern "C" {

/// Called now and then with (done, from, to) while pixels are read or written; its result is
/// ignored. May be null.
typedef int (*CodecProgress)(int, int, int);

/// One record of the capability list, 52 bytes.
struct CodecCapability {
  char extension[8];  ///< Without the dot, NUL-terminated.
  int readable;       ///< 1 or 0.
  int writable;       ///< 1 or 0.
  char reserved[36];  ///< Zero.
};

/// Writes one CodecCapability a known extension into a global memory block of at least 1300 bytes
/// (25 records). `owner` is not used. Returns the number of records, 0 on failure.
EXIFKEEP_PLATFORM_API short AllGetReadWriteCaps(HWND owner, HGLOBAL block);

/// Fills the 40-byte header of the picture at `path`: size, bits a pixel as they will be delivered
/// (1, 8 or 24), resolution in pixels per metre (0 when the file does not say), colours used
/// (palette pictures, else 0). Returns 1 or 0.
EXIFKEEP_PLATFORM_API int AllReadHeader(const char* path, BITMAPINFOHEADER* header);

/// The palette of a palette picture, null for one without (grey pictures included). The caller
/// deletes it.
EXIFKEEP_PLATFORM_API HPALETTE AllReadPalette(const char* path);

/// Decodes the picture at `path` into the image that `image` describes, whose size and depth must
/// be those of AllReadHeader. Returns 1, or 0 with undefined pixels; where 1, `image->lostRows`
/// says how many rows are not whole. `offset` is that of the image's GetLmmOffset.
EXIFKEEP_PLATFORM_API int AllReadDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                        CodecProgress progress);

/// Writes the image to `path`, replacing an existing file. Returns 1, or 0: then the file does not
/// exist, unless it could not be opened for writing in the first place.
EXIFKEEP_PLATFORM_API int AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                        CodecProgress progress);

}  // extern "C"
