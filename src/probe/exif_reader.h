// The object that every exported call builds for itself: what is known of one file's layout, the
// two value buffers of its Exif directory, and the codec bridge of the call. `probeFile` tells Exif
// files from others and is the first step of every reading and writing call.
#pragma once

#include <afxwin.h>

#include <cstdint>
#include <memory>

#include "imageio/image_codec_bridge.h"
#include "probe/exif_file.h"

namespace exifkeep {

class ExifReader : public CObject {
 public:
  // With no bridge given, the reader makes its own and reads the codec's capabilities.
  explicit ExifReader(ImageCodecBridge* bridge = nullptr);

  // True when the file at `path` is an Exif JPEG or Exif TIFF file by name and content. Sets the
  // layout fields anew, then closes the file.
  bool probeFile(const char* path);
  // The same for a file that is open already; the name has been looked at.
  bool probeFile(ExifFile& file);

  // The file position of the TIFF header, from which all TIFF offsets count.
  uint32_t tiffBase() const;

  // The layout that the probe found. Positions are absolute, of a directory's entry count, and -1
  // while unknown; a directory beyond 2 GiB counts as unknown.
  int32_t isJpeg = 0;  // 1: the TIFF structure lies in a JPEG file's APP1 segment
  int32_t exifIfdOffset = -1;
  int32_t primaryIfdOffset = -1;
  int32_t littleEndian = 0;
  uint16_t app0Size = 0;  // bytes of an APP0 segment before APP1, marker included, modulo 65536

  // Values of unbounded size; an ExifIfdRecord points into them.
  std::unique_ptr<uint8_t[]> makerNoteBuffer;
  std::unique_ptr<uint8_t[]> userCommentBuffer;
  // The most bytes that are loaded of each: as many as a save could write, unless the caller uses
  // fewer. The info list shows their beginnings only, and a maker note may be most of the metadata.
  uint32_t longestValue = 1 << 16;

  ImageCodecBridge* codec;

  int32_t thumbnailIfdOffset = -1;  // 0: the file says that it has none
  int32_t gpsIfdOffset = -1;

 private:
  bool probeTiff(ExifFile& file, bool hasLittleEndianMark);
  bool probeJpeg(ExifFile& file);
  bool locateExifDirectory(ExifFile& file);

  std::unique_ptr<ImageCodecBridge> ownedCodec_;
};

// True when the text behind the last '.' of `path` is tif, tiff, jpg, jpeg or jpe in any case. Only
// such files are looked at; what they are comes from their first bytes.
bool hasExifExtension(const char* path);

// `position` as the layout fields hold it.
int32_t asDirectoryPosition(uint64_t position);

}  // namespace exifkeep
