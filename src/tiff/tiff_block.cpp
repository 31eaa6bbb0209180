#include "tiff/tiff_block.h"

#include "tiff/codec_tiff.h"
#include "tiff/tiff_rows.h"
#include "write/directory_writer.h"
#include "write/row_context.h"
#include "write/thumbnail.h"

namespace exifkeep {

namespace {

constexpr uint8_t fileHead[] = {'I', 'I', 42, 0, 8, 0, 0, 0};
constexpr uint32_t tiffHeader = 0;

enum class Outcome { done, tooLarge, failed };

// The directories of one front part on their way into a block.
class FrontPartWriter {
 public:
  explicit FrontPartWriter(uint8_t* block) : writer_(block, tiffHeader) {
    writer_.append(fileHead, sizeof fileHead);
  }

  void writePrimary(OutputRows rows, const ImageIfdRecord& primary, const RowContext& context) {
    primary_ = writer_.writeDirectory(rows, &primary, context);
  }

  // The Exif directory and, where it points to one, the interoperability directory behind it.
  void writeExif(OutputRows rows, const ExifIfdRecord& exif, const RowContext& context,
                 bool hasInteroperability) {
    const uint32_t directory = writer_.writeDirectory(rows, &exif, context);
    writer_.setValue(primary_, tag::exifIfdPointer, directory);
    if (!hasInteroperability) return;
    writer_.setValue(directory, tag::interoperabilityIfdPointer,
                     writer_.writeDirectory(interoperabilityRows, nullptr, context));
  }

  void writeGps(const GpsIfdRecord& gps, const RowContext& context) {
    writer_.setValue(primary_, tag::gpsIfdPointer, writer_.writeDirectory(gpsRows, &gps, context));
  }

  void writeThumbnail(OutputRows rows, const ImageIfdRecord& record, const RowContext& context) {
    thumbnail_ = writer_.writeDirectory(rows, &record, context);
    writer_.setNextDirectory(primary_, thumbnail_);
  }

  bool directoriesFit() const { return !writer_.hasFailed(); }

  // Puts the strip of the thumbnail file behind the directories.
  bool embedThumbnail(const ThumbnailFile& thumbnail);

  // The picture's strip follows; returns where. REQUIRES: nothing has failed.
  uint32_t finish() {
    writer_.setValue(primary_, tag::stripOffsets, writer_.length());
    return writer_.length();
  }

 private:
  DirectoryWriter writer_;
  uint32_t primary_ = 0;
  uint32_t thumbnail_ = 0;
};

bool FrontPartWriter::embedThumbnail(const ThumbnailFile& thumbnail) {
  ExifFile file(thumbnail.path());
  const auto strip = locateStrip(file, stripSize(thumbnail.width(), thumbnail.height()));
  if (!strip || file.size() - *strip > DirectoryWriter::blockSize) return false;
  // All that follows the strip's beginning counts.
  const auto length = static_cast<uint32_t>(file.size() - *strip);
  uint8_t* to = writer_.room(length);
  if (!to || file.readAt(*strip, to, length) != length) return false;
  writer_.setValue(thumbnail_, tag::stripOffsets, writer_.length());
  writer_.advance(length);
  return true;
}

// Writes a front part into a new block: `directories` fills it, then comes the thumbnail.
template <class Directories>
Outcome writeFrontPart(FrontPart& part, const ThumbnailFile& thumbnail, Directories directories) {
  part.block = GlobalBlock(DirectoryWriter::blockSize);
  const BlockLock lock(part.block);
  if (!lock.bytes()) return Outcome::failed;
  FrontPartWriter front(lock.bytes());
  directories(front);
  if (!front.directoriesFit()) return Outcome::tooLarge;
  if (thumbnail.isWritten() && !front.embedThumbnail(thumbnail)) return Outcome::failed;
  part.size = front.finish();
  return Outcome::done;
}

// Tries the Exif record as it is and then without its largest values.
template <class Directories>
FrontPart buildFrontPart(const ExifIfdRecord& exif, const ThumbnailFile& thumbnail,
                         Directories directories) {
  ShrinkingRecord shrinking(exif);
  for (;;) {
    FrontPart part;
    const Outcome outcome = writeFrontPart(
        part, thumbnail, [&](FrontPartWriter& front) { directories(front, shrinking.record()); });
    if (outcome == Outcome::done) return part;
    if (outcome == Outcome::failed || !shrinking.shrink()) return {};
  }
}

void setPictureSize(ImageIfdRecord& primary, const PRaster& picture) {
  primary.imageWidth = picture.GetImageWidth();
  primary.imageLength = picture.GetImageHeight();
}

// The context of a directory that describes a strip of width x height pixels.
RowContext ofStrip(RowContext context, unsigned samples, unsigned width, unsigned height) {
  context[Supplied::stripBytes] = samples * width * height;
  context[Supplied::rowsPerStrip] = height;
  return context;
}

}  // namespace

FrontPart buildTiffBlockFromRecords(const ExifReader& reader, const PRaster& picture,
                                    PRaster* hostThumbnail, const ExifIfdRecord* exif,
                                    ImageIfdRecord* primary, const ImageIfdRecord* thumbnail,
                                    const GpsIfdRecord* gps) {
  if (!exif || !primary) return {};
  ThumbnailFile file(temporaryTiffName);
  // Not looked for (-1) does not count as none.
  if (thumbnail && reader.thumbnailIfdOffset != 0)
    file.write(*reader.codec, picture, hostThumbnail);
  setPictureSize(*primary, picture);
  const RowContext context = contextOf(picture);
  // The record's samples: intended, the byte counts agree with the entry beside them.
  const unsigned samples = primary->samplesPerPixel;
  const RowContext ofPicture = ofStrip(context, samples, primary->imageWidth, primary->imageLength);
  const RowContext ofThumbnail = ofStrip(context, samples, file.width(), file.height());
  return buildFrontPart(*exif, file, [&](FrontPartWriter& front, const ExifIfdRecord& fitting) {
    front.writePrimary(tiffPrimaryRows, *primary, ofPicture);
    front.writeExif(tiffExifRows, fitting, context, fitting.isR98Interoperability);
    if (primary->hasGpsIfdPointer && gps) front.writeGps(*gps, context);
    if (file.isWritten()) front.writeThumbnail(tiffThumbnailRows, *thumbnail, ofThumbnail);
  });
}

FrontPart buildNewTiffBlock(ExifReader& reader, const PRaster& picture, PRaster* hostThumbnail,
                            const ExifIfdRecord& exif, ImageIfdRecord& primary) {
  ThumbnailFile file(temporaryTiffName);
  file.write(*reader.codec, picture, hostThumbnail);
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
  return buildFrontPart(exif, file, [&](FrontPartWriter& front, const ExifIfdRecord& fitting) {
    front.writePrimary(newTiffPrimaryRows, primary, ofPicture);
    front.writeExif(newTiffExifRows, fitting, context, true);
    if (file.isWritten()) front.writeThumbnail(newTiffThumbnailRows, thumbnail, ofThumbnail);
  });
}

}  // namespace exifkeep
