// The commands that decode and write pictures: open, save and audio, on small pictures that the
// codec wrote.
#include <gmock/gmock.h>

#include <csignal>

#include "codec/picture_fixture.h"
#include "other_metadata.h"
#include "program/exif_fixture.h"
#include "program/shell.h"
#include "system.h"

namespace exifkeep::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class PictureCommands : public ShellTest {
 protected:
  PictureCommands() {
    PRaster edited = patterned(24, 40, 30), plain = patterned(24, 64, 48);
    plain.setResolution(11811, 11811);
    EXPECT_EQ(save(path("edited.png"), edited) + save(path("plain.jpg"), plain), 2);
    write("exif.jpg", withPixels(exifJpeg("Maker"), read("plain.jpg")));
    std::filesystem::create_directory(path("sounds"));
    write("sounds/note.wav", "new");
  }

  // Expects the status and returns what the command wrote to both streams.
  std::string run(const std::string& command, int status) {
    const Outcome outcome = ShellTest::run(command);
    EXPECT_EQ(outcome.status, status) << command << '\n' << outcome.err;
    return outcome.out + outcome.err;
  }
};

TEST_F(PictureCommands, LostRowsAreWrittenOnRequestOnly) {
  const std::string whole = read("exif.jpg");
  write("cut.jpg", whole.substr(0, whole.size() - 200));
  const std::string open = run("$E open cut.jpg", 0);
  EXPECT_THAT(open, HasSubstr(" rows lost"));
  for (const char* command : {"open cut.jpg --image new.png", "save cut.jpg new.jpg",
                              "save exif.jpg new.jpg --picture cut.jpg", "audio cut.jpg"}) {
    EXPECT_THAT(run(std::string("$E ") + command, 3), HasSubstr("of 48 rows are lost; --damaged"));
    EXPECT_FALSE(std::filesystem::exists(path("new.jpg")));
    EXPECT_THAT(run(std::string("$E ") + command + " --damaged", 0),
                HasSubstr("cut.jpg: damaged: "));
    std::filesystem::remove(path("new.jpg"));
  }
}

TEST_F(PictureCommands, SaveTellsWhetherMetadataWentAlong) {
  EXPECT_THAT(run("$E save exif.jpg new.jpg --picture edited.png", 0),
              HasSubstr("new.jpg: saved with the Exif data of exif.jpg"));
  EXPECT_THAT(run("$E info new.jpg", 0), AllOf(HasSubstr("Maker"), Not(HasSubstr("Software"))));
  EXPECT_THAT(run("$E open new.jpg", 0), StartsWith("image      40 x 30 pixels, 24 bits"));
  EXPECT_THAT(run("$E save exif.jpg new.jpg", 3), HasSubstr("new.jpg: exists; --yes"));
  run("touch -d '2002-05-14 10:20:30' exif.jpg; mkdir to; $E save --keep-time --yes exif.jpg "
      "new.jpg to",
      0);
  EXPECT_EQ(run("stat -c %Y exif.jpg", 0), run("stat -c %Y to/exif.jpg", 0));
  run("$E check to/new.jpg && $E save exif.jpg new.jpg --yes", 0);
  run("$E save exif.jpg turned.jpg --process 2", 0);
  EXPECT_THAT(run("$E info turned.jpg", 0), HasSubstr("Software"));
  EXPECT_THAT(run("$E save exif.jpg new.png", 0), HasSubstr("saved without Exif data"));
  EXPECT_THAT(run("$E save plain.jpg plain2.jpg", 0), HasSubstr("plain.jpg has none"));
  EXPECT_EQ(run("$E check plain2.jpg", 1), "plain2.jpg: not an Exif file\n");
}

std::string segment(char marker, const std::string& content) {
  return std::string{'\xFF', marker} + number(content.size() + 2, 2, Order::mm) + content;
}

std::string chunk(const std::string& type, const std::string& content) {
  return number(content.size(), 4, Order::mm) + type + content + "CRC ";
}

TEST_F(PictureCommands, WhatIsNotKeptIsNamed) {
  using namespace std::string_literals;
  const auto imageResource = [](char id) { return "8BIM\4"s + id + "\0\0\0\0\0\1x\0"s; };
  const std::string photoshop = "Photoshop 3.0\0"s + imageResource(3);
  const auto jpeg = [](const std::string& segments) {
    return std::string("\xFF\xD8") + segments + "\xFF\xD9";
  };
  const auto png = [](const std::string& chunks) {
    return std::string("\x89PNG\r\n\x1A\n") + chunks;
  };
  const Picture tiff = {.image = {bytes(700, "<x/>"), bytes(33723, "x"), bytes(34675, "x")}};
  const std::vector<std::pair<std::string, const char*>> cases = {
      {read("exif.jpg"), ""},
      {jpeg(segment('\xFE', "hello") + segment('\xE2', "ICC_PROFILE\0\1\1"s)),
       "ICC profile, comment"},
      {jpeg(segment('\xE1', "http://ns.adobe.com/xap/1.0/\0<x/>"s)), "XMP"},
      {jpeg(segment('\xED', photoshop + imageResource(4))), "IPTC"},
      {jpeg(segment('\xED', photoshop)), ""},
      {jpeg(segment('\xED', photoshop + "8BIM\4\5\xFF")), ""},
      {jpeg(segment('\xDA', "") + segment('\xFE', "part of the scan")), ""},
      {tiffBytes(tiff, Order::ii), "ICC profile, XMP, IPTC"},
      {tiffBytes(tiff, Order::mm), "ICC profile, XMP, IPTC"},
      {png(chunk("iCCP", "x") + chunk("IDAT", "tEXt") + chunk("tEXt", "a\0b"s)),
       "ICC profile, comment"},
      {png(chunk("iTXt", "XML:com.adobe.xmp\0\0\0\0\0<x/>"s)), "XMP"},
  };
  for (const auto& [file, kinds] : cases) {
    write("file", file);
    EXPECT_EQ(program::otherMetadata(path("file")), kinds) << testing::PrintToString(file);
  }
  std::string commented = read("exif.jpg");
  commented.insert(commented.size() - read("plain.jpg").size() + 2, segment('\xFE', "hello"));
  write("exif.jpg", commented);
  EXPECT_THAT(run("$E save exif.jpg exif.jpg", 0), EndsWith("exif.jpg; not kept: comment\n"));
  write("exif.jpg", commented);
  EXPECT_THAT(run("$E audio exif.jpg", 0), EndsWith("exif.jpg: not kept: comment\n"));
}

TEST_F(PictureCommands, OpenDescribesOrWritesTheImages) {
  EXPECT_EQ(run("$E open exif.jpg", 0),
            "image      64 x 48 pixels, 24 bits, 300 x 300 dpi\nthumbnail  none\n");
  run("$E save exif.jpg both.jpg --thumbnail edited.png", 0);
  run("$E open both.jpg --image image.png --thumbnail small.tif", 0);
  EXPECT_THAT(read("image.png"), StartsWith("\x89PNG"));
  EXPECT_THAT(read("small.tif"), StartsWith("II*"));
}

TEST_F(PictureCommands, WhatFailsLeavesNothing) {
  run("mkdir folder.jpg; printf old >old.tif", 0);
  const auto before = names();
  EXPECT_THAT(run("$E open exif.jpg --image folder.jpg", 3), HasSubstr("Is a directory"));
  run("trap '' XFSZ; ulimit -f 4; $E open exif.jpg --image old.tif", 3);
  EXPECT_EQ(read("old.tif"), "old");
  run("$E save exif.jpg new.jpg --picture gone.png", 3);
  EXPECT_THAT(run("$E open exif.jpg --thumbnail small.png", 3), HasSubstr("no thumbnail"));
  EXPECT_THAT(run("$E open exif.jpg --image ./exif.jpg", 3), HasSubstr("itself"));
  EXPECT_THAT(run("$E open exif.jpg --image image.xyz", 3), HasSubstr("jpg, jpeg, jpe, tif"));
  run("$E open plain.jpg --image image.png", 1);
  // A regular file whose first byte cannot be read.
  EXPECT_THAT(run("$E save /proc/self/mem new.jpg", 3), HasSubstr("read: Input/output error; no"));
  EXPECT_EQ(names(), before);
}

void saveAndBeEnded(int signal, const std::string& file) {
  const program::EndingDelay delay;
  {
    const program::EndingDelay inner;
    std::raise(signal);
  }
  if (program::endingWaits()) writeFile(file, "saved");
}

TEST_F(PictureCommands, ASignalEndsTheProgramAfterTheCall) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const std::string file = "saved" + std::to_string(signal);
    EXPECT_EXIT(saveAndBeEnded(signal, path(file)), testing::KilledBySignal(signal), "");
    EXPECT_EQ(read(file), "saved");
  }
  // As nohup starts it.
  std::signal(SIGHUP, SIG_IGN);
  EXPECT_EXIT(
      {
        saveAndBeEnded(SIGHUP, path("ignored"));
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
  std::signal(SIGHUP, SIG_DFL);
}

TEST_F(PictureCommands, AudioCopiesTheRecordingAndRecordsItsName) {
  EXPECT_EQ(run("$E audio exif.jpg --sound sounds/note.wav --software 'My Album'", 0),
            "exif.jpg: note.wav\n");
  EXPECT_EQ(read("note.wav"), "new");
  EXPECT_EQ(run("$E sound exif.jpg", 0), "exif.jpg: note.wav\n");
  EXPECT_THAT(run("$E info exif.jpg", 0), AllOf(HasSubstr("Maker"), HasSubstr("My Album")));
  EXPECT_EQ(run("$E audio exif.jpg", 0), "exif.jpg: exif.wav\n");
  // Given an image, the picture itself need not be one that can be decoded.
  write("exif.jpg", exifJpeg("Maker"));
  run("$E audio exif.jpg", 3);
  EXPECT_EQ(run("$E audio exif.jpg --picture edited.png", 0), "exif.jpg: exif.wav\n");
}

// Without a terminal there is nobody to ask.
TEST_F(PictureCommands, AudioOverwritesOnlyWhenTold) {
  write("note.wav", "old");
  const std::string before = read("exif.jpg");
  EXPECT_THAT(run("yes | $E audio exif.jpg --sound sounds/note.wav", 3), HasSubstr("--yes"));
  EXPECT_EQ(read("note.wav"), "old");
  EXPECT_EQ(read("exif.jpg"), before);
  run("$E audio exif.jpg --sound sounds/note.wav --yes", 0);
  EXPECT_EQ(read("note.wav"), "new");
  if (ShellTest::run("command -v script").status != 0) GTEST_SKIP() << "no terminal to be had";
  write("note.wav", "old");
  const std::string answered = "| script -qec \"$E audio exif.jpg --sound sounds/note.wav\" typed";
  EXPECT_THAT(run("echo no " + answered, 3), HasSubstr("note.wav exists. Overwrite it? [y/N]"));
  EXPECT_EQ(read("note.wav"), "old");
  run("echo yes " + answered, 0);
  EXPECT_EQ(read("note.wav"), "new");
}

TEST_F(PictureCommands, AudioTurnsAPlainPictureIntoAJpegBesideIt) {
  write("edited.jpg", "somebody's file");
  EXPECT_THAT(run("$E audio edited.png", 3), HasSubstr("edited.jpg: exists"));
  EXPECT_EQ(read("edited.jpg"), "somebody's file");
  EXPECT_EQ(run("$E audio edited.png --yes", 0), "edited.jpg: edited.wav\n");
  EXPECT_EQ(run("$E sound edited.jpg", 0), "edited.jpg: edited.wav\n");
}

}  // namespace
}  // namespace exifkeep::test
