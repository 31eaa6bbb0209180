// SPDX-License-Identifier: MIT
// The basis of the tests of saving: pictures, full records, and a codec whose files a test may
// replace.
#pragma once

#include "codec/picture_fixture.h"
#include "failure_switch.h"
#include "read/reading.h"
#include "write/jpeg_stream.h"

namespace exifkeep::test {

// The codec writes this instead of an encoded picture; an empty text makes the save fail.
struct CodecFiles {
  std::optional<std::string> thumbnail;  // under the temporary name
  std::optional<std::string> picture;    // under any other
};
extern CodecFiles codecFiles;

class SaveTest : public ScratchTest {
 protected:
  ~SaveTest() override {
    codecFiles = {};
    clearFailures();
  }

  bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
  std::string read(const std::string& name) const { return readFile(path(name)); }
  void write(const std::string& name, const std::string& bytes) const {
    writeFile(path(name), bytes);
  }
  Reading recordsOf(const std::string& name) const { return Reading(path(name)); }

  // The codec's JPEG stream of the image after compaction.
  std::string compacted(PRaster& image) {
    const EncodedPicture encoded(reader_.codec(), image, "a.jpg");
    const JpegStream stream = compactJpegStream(encoded);
    std::string bytes;
    for (const Piece& piece : stream.pieces()) bytes.append(piece.bytes.begin(), piece.bytes.end());
    return bytes;
  }

  ExifReader reader_;
};

// Four quarters of different colours, with 71.501 by 149.504 dots per inch: 72 by 150 when rounded.
PRaster picture(unsigned width, unsigned height, int bits = 24);

// Those of the full picture.
ExifMetadata fullRecords();

// The segment after SOI.
std::string segmentOf(const std::string& file);

}  // namespace exifkeep::test
