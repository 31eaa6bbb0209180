// SPDX-License-Identifier: MIT
/// @file
/// The picture codec, which decodes and encodes picture files. All functions take 8-bit paths,
/// return 0 or null on failure, throw nothing, print nothing and may be called from any thread.
///
/// The format is recognised by the first bytes of a file when reading, and selected by the
/// extension of its name when writing: JPEG (jpg, jpeg, jpe), TIFF (tif, tiff) or PNG (png).
/// Orientation tags are ignored: pixels are returned as stored. A picture has at most
/// PRaster::maxPixels pixels, and 2^20 on a side. Transparent pixels are blended with white.
///
/// A damaged or truncated JPEG picture is decoded as far as possible, and PRaster::lostRows
/// (tagLmmInfo::lostRows) is the number of bad rows; if no row can be decoded, that is a failure.
/// So is a damaged or truncated TIFF or PNG picture, and any file whose pixels take more than 64
/// MiB and more than 2048 times the size of the file.
///
/// JPEG files are written as baseline 4:2:2 with quality 90 and always three components; TIFF files
/// with one uncompressed 8-bit RGB strip at the end; PNG files in the image's own depth.
#pragma once

#include <platform_api.h>
#include <praster.h>
#include <windows.h>

#include <cstddef>

extern "C" {

/// Called repeatedly with (done, from, to) while pixels are read or written. The result is ignored.
/// May be null.
typedef int (*CodecProgress)(int, int, int);

/// A record of the capability list, 52 bytes.
struct CodecCapability {
  char extension[8];  ///< Without the dot, NUL-terminated.
  int readable;       ///< 1 or 0.
  int writable;       ///< 1 or 0.
  char reserved[36];  ///< Zero.
};

/// Writes a CodecCapability for each known extension into a global memory block of at least 1300
/// bytes (25 records). `owner` is not used. Returns the number of records, or 0 on failure.
EXIFKEEP_PLATFORM_API short AllGetReadWriteCaps(HWND owner, HGLOBAL block);

/// Fills the 40-byte header for the picture at `path`: size, bits per pixel when decoded (1, 8 or
/// 24), resolution in pixels per metre (0 if the file does not specify it), colours used (0 unless
/// it has a palette). Returns 1 or 0.
EXIFKEEP_PLATFORM_API int AllReadHeader(const char* path, BITMAPINFOHEADER* header);

/// The palette of a palette picture, or null for other pictures, including grey ones. The caller
/// deletes it.
EXIFKEEP_PLATFORM_API HPALETTE AllReadPalette(const char* path);

/// Decodes the picture at `path` into the image that `image` describes, which must have the size
/// and depth given by AllReadHeader. Returns 1 and sets `image->lostRows` to the number of bad
/// rows, or returns 0 with undefined pixels. `offset` is the image's GetLmmOffset.
EXIFKEEP_PLATFORM_API int AllReadDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                        CodecProgress progress);

/// Writes the image to `path`, replacing any existing file. Returns 1, or 0 on failure; the file is
/// then deleted, unless it could not be opened for writing in the first place.
EXIFKEEP_PLATFORM_API int AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                        CodecProgress progress);

/// Receives the bytes of a picture file in order, in pieces. `receiver` is the pointer given to
/// AllSendDIBImg. Returns 0 to end that call.
typedef int (*CodecReceive)(void* receiver, const void* bytes, size_t count);

/// Like AllSaveDIBImg, but sends the bytes of the file to `receive`; only the extension of `path`
/// is used. A TIFF file is sent with its pixels last, piece by piece, without storing it in memory.
/// Returns 1, or 0 if the receiver did not get the complete file.
EXIFKEEP_PLATFORM_API int AllSendDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                        CodecProgress progress, CodecReceive receive,
                                        void* receiver);

}  // extern "C"
