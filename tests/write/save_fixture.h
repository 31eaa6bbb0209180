// What the tests of saving stand on: pictures, records in which every field has a value of its own,
// a codec whose files a test may replace, and a strict reader of written segments that knows
// nothing of the code that wrote them.
#pragma once

#include <failure_switch.h>

#include <deque>

#include "codec/picture_fixture.h"
#include "probe/exif_reader.h"
#include "read/records.h"
#include "read/tag_tables.h"

namespace exifkeep::test {

// What the codec writes in place of an encoded picture; the empty text is a failed save.
struct CodecFiles {
  std::optional<std::string> thumbnail;  // under the temporary name
  std::optional<std::string> picture;    // under any other
};
extern CodecFiles codecFiles;

class SaveTest : public CodecTest {
 protected:
  ~SaveTest() override;

  bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
  std::string read(const std::string& name) const;
  void write(const std::string& name, const std::string& bytes) const;
  // The records of a file; their maker note and comment live as long as the test.
  ExifMetadata recordsOf(const std::string& name);

  ExifReader reader_;

 private:
  std::deque<ExifReader> readers_;
};

// Four quarters of different colours, 71.501 by 149.504 dots per inch: 72 by 150 when rounded.
PRaster picture(unsigned width, unsigned height, int bits = 24);

// The temporary file of thumbnails.
std::string temporaryThumbnail();

// Sets every flag, and every field to digits that tell its tag from others.
ExifMetadata fullRecords();

// Every flag and every present value but those a save renews: pointers and DateTime.
void expectSameRecords(const ExifMetadata& written, const ExifMetadata& expected);
// What is left of records that were read and saved.
ExifMetadata afterSave(ExifMetadata source);

struct Entry {
  unsigned tag, count;
  std::string data;  // the whole value, wherever it lies
};

struct Directory {
  unsigned at, next, end;  // TIFF offsets; end: of the value area
  std::vector<Entry> entries;
  const Entry* find(unsigned tag) const;
};

struct Segment {
  Directory primary, exif;
  std::optional<Directory> interoperability, gps, thumbnail;
  std::string thumbnailJpeg;
};

// Fails the test unless everything is where it must be: directories and value areas one behind the
// other in order, values even, padded with zeros and in the order of their entries, pointers right,
// nothing behind the thumbnail.
Segment parseSegment(const std::string& bytes);
// The segment behind SOI.
std::string segmentOf(const std::string& file);
// A segment, or a file that begins with it, with 'T' for every character of the time of saving.
std::string withoutTimes(std::string bytes, const Segment& segment);
// FNV-1a of the bytes with each `time` as the same 'T's.
uint32_t fingerprint(std::string bytes, const std::string& time);

}  // namespace exifkeep::test
