// SPDX-License-Identifier: MIT
// The state of one exported call: the layout of its file, buffers for two values of the Exif
// directory, and the codec bridge. Every call that reads or writes metadata begins with
// `probeFile`, which decides whether a file is an Exif file.
#pragma once

#include <afxwin.h>

#include <cstdint>
#include <memory>

#include "imageio/image_codec_bridge.h"
#include "probe/exif_file.h"

namespace exifkeep {

class ExifReader : public CObject {
 public:
  explicit ExifReader(ImageCodecBridge* bridge = nullptr) : codec_(bridge) {}

  // True if the file at `path` is an Exif JPEG or Exif TIFF file by name and content. Sets the
  // layout fields below.
  bool probeFile(const char* path);
  // The same for an open file, whose name is not checked.
  bool probeFile(ExifFile& file);

  // The bridge given to the constructor, or else the reader's own, which is created with the
  // codec's capabilities in the first call, as reading metadata does not need it.
  ImageCodecBridge& codec();

  // The file position of the TIFF header, from which all TIFF offsets count.
  uint32_t tiffBase() const;

  // The layout found by the probe. The position of a directory is the absolute one of its entry
  // count, or -1 if unknown or beyond 2 GiB.
  int32_t isJpeg = 0;  // 1: the TIFF structure is in a JPEG file's APP1 segment
  int32_t exifIfdOffset = -1;
  int32_t primaryIfdOffset = -1;
  int32_t littleEndian = 0;
  uint16_t app0Size = 0;  // bytes of an APP0 segment before APP1, marker included, modulo 65536

  // Values of any size; an ExifIfdRecord points into them.
  std::unique_ptr<uint8_t[]> makerNoteBuffer;
  std::unique_ptr<uint8_t[]> userCommentBuffer;
  // How many bytes of each to load: as many as a save can write, unless the caller needs fewer. The
  // info list shows only their beginning, and the maker note may be most of the metadata.
  uint32_t maxValueLength = 1 << 16;

  int32_t thumbnailIfdOffset = -1;  // 0: the file has none
  int32_t gpsIfdOffset = -1;

 private:
  bool probeTiff(ExifFile& file, bool hasLittleEndianMark);
  bool probeJpeg(ExifFile& file);
  bool locateExifDirectory(ExifFile& file);

  ImageCodecBridge* codec_;
  std::unique_ptr<ImageCodecBridge> ownedCodec_;
};

// Whether the extension of `path` is tif, tiff, jpg, jpeg or jpe in any case. No other files are
// opened; whether such a file is JPEG or TIFF depends on its first bytes.
bool hasExifExtension(const char* path);

// `position` as stored in the layout fields.
int32_t asDirectoryPosition(uint64_t position);

}  // namespace exifkeep
