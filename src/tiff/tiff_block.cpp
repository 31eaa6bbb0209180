// SPDX-License-Identifier: MIT
#include "tiff/tiff_block.h"

#include "system/temporary_picture.h"
#include "tiff/codec_tiff.h"
#include "tiff/tiff_rows.h"
#include "write/metadata_block.h"
#include "write/thumbnail.h"

namespace exifkeep {

namespace {

// The TIFF header, directly followed by IFD0.
constexpr uint8_t fileStart[] = {'I', 'I', 42, 0, 8, 0, 0, 0};
constexpr BlockHead fileHead{fileStart, 0};

// Appends the strip of the thumbnail file to the directories.
bool embedThumbnail(MetadataBlock& front, const EncodedThumbnail& thumbnail) {
  if (thumbnail.file().parts().empty()) return false;
  ExifFile file(thumbnail.file().parts()[0]);
  const auto strip = locateStrip(file);
  const uint64_t size = stripSize(thumbnail.width(), thumbnail.height());
  if (!strip || *strip > file.size() || size > file.size() - *strip) return false;
  if (file.size() - *strip > DirectoryWriter::blockSize) return false;
  // Everything from the start of the strip to the end of the file is embedded.
  const auto length = static_cast<uint32_t>(file.size() - *strip);
  uint8_t* to = front.thumbnailRoom(length);
  if (!to || file.readAt(*strip, to, length) != length) return false;
  front.endThumbnail(tag::stripOffsets, length);
  return true;
}

// The picture's strip follows the block.
FrontPart buildFrontPart(const BlockContents& contents, const EncodedThumbnail& thumbnail) {
  MetadataBlock front;
  if (!front.write(fileHead, contents)) return {};
  if (thumbnail.isTaken() && !embedThumbnail(front, thumbnail)) return {};
  const uint32_t size = front.length();
  front.setPrimary(tag::stripOffsets, size);
  return {front.release(), size};
}

void setPictureSize(ImageIfdRecord& primary, const PRaster& picture) {
  primary.imageWidth = picture.GetImageWidth();
  primary.imageLength = picture.GetImageHeight();
}

// The context of a directory for a strip of width x height pixels.
RowContext ofStrip(RowContext context, unsigned samples, unsigned width, unsigned height) {
  context[Supplied::stripBytes] = samples * width * height;
  context[Supplied::rowsPerStrip] = height;
  return context;
}

}  // namespace

FrontPart buildTiffBlockFromRecords(ExifReader& reader, const PRaster& picture,
                                    PRaster* hostThumbnail, ExifMetadata& metadata) {
  ImageIfdRecord& primary = metadata.primary;
  EncodedThumbnail encoded(temporaryTiffName);
  // A position of -1 (not looked for) does not count as none.
  if (reader.thumbnailIfdOffset != 0 && !encoded.encode(reader.codec(), picture, hostThumbnail))
    return {};
  setPictureSize(primary, picture);
  const RowContext context = contextOf(picture);
  // The record's number of samples. Intended: the byte counts match the entry written with them.
  const unsigned samples = primary.samplesPerPixel;
  const RowContext ofPicture = ofStrip(context, samples, primary.imageWidth, primary.imageLength);
  const RowContext ofThumbnail = ofStrip(context, samples, encoded.width(), encoded.height());
  return buildFrontPart({.primaryRows = tiffPrimaryRows,
                         .primary = primary,
                         .exifRows = tiffExifRows,
                         .exif = metadata.exif,
                         .hasInteroperability = metadata.exif.isR98Interoperability != 0,
                         .gps = primary.hasGpsIfdPointer ? &metadata.gps : nullptr,
                         .thumbnailRows = encoded.isTaken() ? tiffThumbnailRows : OutputRows(),
                         .thumbnail = &metadata.thumbnail,
                         .context = ofPicture,
                         .ofThumbnail = ofThumbnail},
                        encoded);
}

FrontPart buildNewTiffBlock(ExifReader& reader, const PRaster& picture, PRaster* hostThumbnail,
                            const ExifIfdRecord& exif, ImageIfdRecord& primary) {
  EncodedThumbnail encoded(temporaryTiffName);
  if (!encoded.encode(reader.codec(), picture, hostThumbnail)) return {};
  setPictureSize(primary, picture);
  ImageIfdRecord thumbnail;
  resetImageIfdRecord(reader, thumbnail);
  if (encoded.isTaken() && !encoded.file().parts().empty()) {
    ExifFile file(encoded.file().parts()[0]);
    readSavedTiffDirectory(reader, file, thumbnail);
  }
  const RowContext context = contextOf(picture);
  const RowContext ofPicture = ofStrip(context, 3, primary.imageWidth, primary.imageLength);
  const RowContext ofThumbnail = ofStrip(context, 3, encoded.width(), encoded.height());
  return buildFrontPart({.primaryRows = newTiffPrimaryRows,
                         .primary = primary,
                         .exifRows = newTiffExifRows,
                         .exif = exif,
                         .hasInteroperability = true,
                         .gps = nullptr,
                         .thumbnailRows = encoded.isTaken() ? newTiffThumbnailRows : OutputRows(),
                         .thumbnail = &thumbnail,
                         .context = ofPicture,
                         .ofThumbnail = ofThumbnail},
                        encoded);
}

}  // namespace exifkeep
