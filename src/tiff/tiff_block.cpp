#include "tiff/tiff_block.h"

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
bool embedThumbnail(MetadataBlock& front, const ThumbnailFile& thumbnail) {
  ExifFile file(thumbnail.path());
  const auto strip = locateStrip(file, stripSize(thumbnail.width(), thumbnail.height()));
  if (!strip || file.size() - *strip > DirectoryWriter::blockSize) return false;
  // Everything from the start of the strip to the end of the file is embedded.
  const auto length = static_cast<uint32_t>(file.size() - *strip);
  uint8_t* to = front.thumbnailRoom(length);
  if (!to || file.readAt(*strip, to, length) != length) return false;
  front.endThumbnail(tag::stripOffsets, length);
  return true;
}

// The picture's strip follows the block.
FrontPart buildFrontPart(const BlockContents& contents, const ThumbnailFile& thumbnail) {
  MetadataBlock front;
  if (!front.write(fileHead, contents)) return {};
  if (thumbnail.isWritten() && !embedThumbnail(front, thumbnail)) return {};
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
  ThumbnailFile file(temporaryTiffName);
  // A position of -1 (not looked for) does not count as none.
  if (reader.thumbnailIfdOffset != 0 && !file.write(reader.codec(), picture, hostThumbnail))
    return {};
  setPictureSize(primary, picture);
  const RowContext context = contextOf(picture);
  // The record's number of samples. Intended: the byte counts match the entry written with them.
  const unsigned samples = primary.samplesPerPixel;
  const RowContext ofPicture = ofStrip(context, samples, primary.imageWidth, primary.imageLength);
  const RowContext ofThumbnail = ofStrip(context, samples, file.width(), file.height());
  return buildFrontPart({.primaryRows = tiffPrimaryRows,
                         .primary = primary,
                         .exifRows = tiffExifRows,
                         .exif = metadata.exif,
                         .hasInteroperability = metadata.exif.isR98Interoperability != 0,
                         .gps = primary.hasGpsIfdPointer ? &metadata.gps : nullptr,
                         .thumbnailRows = file.isWritten() ? tiffThumbnailRows : OutputRows(),
                         .thumbnail = &metadata.thumbnail,
                         .context = ofPicture,
                         .ofThumbnail = ofThumbnail},
                        file);
}

FrontPart buildNewTiffBlock(ExifReader& reader, const PRaster& picture, PRaster* hostThumbnail,
                            const ExifIfdRecord& exif, ImageIfdRecord& primary) {
  ThumbnailFile file(temporaryTiffName);
  if (!file.write(reader.codec(), picture, hostThumbnail)) return {};
  setPictureSize(primary, picture);
  ImageIfdRecord thumbnail;
  resetImageIfdRecord(reader, thumbnail);
  if (file.isWritten()) {
    ExifFile written(file.path());
    readSavedTiffDirectory(reader, written, thumbnail);
  }
  const RowContext context = contextOf(picture);
  const RowContext ofPicture = ofStrip(context, 3, primary.imageWidth, primary.imageLength);
  const RowContext ofThumbnail = ofStrip(context, 3, file.width(), file.height());
  return buildFrontPart({.primaryRows = newTiffPrimaryRows,
                         .primary = primary,
                         .exifRows = newTiffExifRows,
                         .exif = exif,
                         .hasInteroperability = true,
                         .gps = nullptr,
                         .thumbnailRows = file.isWritten() ? newTiffThumbnailRows : OutputRows(),
                         .thumbnail = &thumbnail,
                         .context = ofPicture,
                         .ofThumbnail = ofThumbnail},
                        file);
}

}  // namespace exifkeep
