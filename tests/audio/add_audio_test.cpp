// The exports for recordings, on files: what is written, and what stays untouched on failure.
#include <exifkeep/exifkeep.h>
#include <gtest/gtest.h>
#include <pxcodec32.h>
#include <shellapi.h>

#include <array>
#include <cstring>

#include "failure_switch.h"
#include "imageio/path_extension.h"
#include "platform/scratch.h"
#include "program/exif_fixture.h"
#include "read/read_metadata.h"
#include "tiff/save_tiff.h"
#include "write/save_jpeg.h"

namespace exifkeep {
namespace {

// A text in memory of just its size, so that a longer one cannot be written back unseen.
struct HostBuffer {
  explicit HostBuffer(const std::string& text) : bytes(new char[text.size() + 1]) {
    std::strcpy(bytes.get(), text.c_str());
  }
  std::unique_ptr<char[]> bytes;
};

struct ExifPicture {
  ExifReader reader;
  ExifMetadata all = {};

  explicit ExifPicture(const std::string& path) {
    EXPECT_TRUE(
        readExifMetadata(reader, path.c_str(), all.exif, all.primary, &all.thumbnail, &all.gps));
  }
  // Present fields of IFD0, the Exif, GPS and thumbnail directories.
  std::array<uint32_t, 4> sizes() const {
    return {countPresentImageFields(all.primary), countPresentExifFields(all.exif),
            countPresentGpsFields(all.gps), countPresentImageFields(all.thumbnail)};
  }
};

class AddAudioTest : public test::ScratchTest {
 protected:
  AddAudioTest() {
    image_.CreateImage(PRaster::type8Bit, 64, 48, 0, 0, 2835, 2835);
    std::filesystem::create_directory(path("rec"));
    test::writeFile(path("rec/voice.wav"), "RIFF");
  }
  ~AddAudioTest() override {
    SetShellCopyHandler({});
    clearFailures();
  }

  std::string plainPicture(const std::string& name) {
    tagLmmInfo memory;
    image_.GetLmmInfo(memory);
    EXPECT_TRUE(AllSaveDIBImg(path(name).c_str(), &memory, 0, nullptr));
    return path(name);
  }
  // With something in each directory.
  std::string exifPicture(const std::string& name) {
    ExifMetadata all = {};
    all.primary.hasMake = all.primary.hasOrientation = all.primary.hasGpsIfdPointer =
        all.primary.hasExifIfdPointer = 1;
    std::strcpy(all.primary.make, "Maker");
    all.exif.hasExifVersion = all.gps.hasGpsAltitude = all.thumbnail.hasCopyright = 1;
    all.gps.gpsAltitude = {8848, 1};
    ExifReader reader;
    const std::string file = path(name);
    EXPECT_TRUE(isTiffName(name)
                    ? saveTiffWithRecords(reader, file.c_str(), &image_, nullptr, all)
                    : saveJpegWithRecords(reader, file.c_str(), true, &image_, nullptr, all));
    return file;
  }

  // Calls AddAudioFile; the texts become what the host's buffers hold afterwards.
  int attach(std::string& picture, std::string& sound) {
    const HostBuffer pictureBuffer(picture), soundBuffer(sound);
    const int result = AddAudioFile(pictureBuffer.bytes.get(), "Host", soundBuffer.bytes.get(),
                                    &image_, nullptr, nullptr);
    picture = pictureBuffer.bytes.get();
    sound = soundBuffer.bytes.get();
    return result;
  }
  int addAudio(std::string& picture, const std::string& software) {
    const HostBuffer buffer(picture);
    const int result = AddAudio(buffer.bytes.get(), software.c_str(), &image_, nullptr);
    picture = buffer.bytes.get();
    return result;
  }

  void expectUntouched(int result, const std::string& picture, const std::string& sound) {
    std::string pictureAfter = picture, soundAfter = sound;
    const std::string bytes = test::readFile(picture);
    const std::set<std::string> files = names();
    EXPECT_EQ(attach(pictureAfter, soundAfter), result) << picture << ' ' << sound;
    EXPECT_EQ(pictureAfter + soundAfter, picture + sound);
    EXPECT_EQ(test::readFile(picture), bytes);
    EXPECT_EQ(names(), files);
  }

  PRaster image_;
};

TEST_F(AddAudioTest, GivesAPlainPictureExifData) {
  for (const auto& [before, after, sound] :
       {std::tuple("scan.png", "scan.jpg", "scan.wav"),
        {"a.JPG", "a.jpg", "a.wav"},
        {"Long page name.tif", "Long page name.tif", "Long p~1.wav"}}) {
    std::string picture = plainPicture(before);
    EXPECT_EQ(addAudio(picture, std::string(300, 's')), 1);
    EXPECT_EQ(picture, path(after));
    const ExifPicture written(picture);
    EXPECT_STREQ(written.all.exif.relatedSoundFile, sound);
    EXPECT_EQ(written.all.primary.software, std::string(255, 's'));
    EXPECT_TRUE(std::filesystem::exists(path(before)));
    EXPECT_EQ(image_.GetImageType(), PRaster::type24Bit);
  }
}

TEST_F(AddAudioTest, KeepsTheMetadataOfAnExifPicture) {
  test::writeFile(path("rec/123456789.wav"), "RIFF");
  for (const char* name : {"a.jpg", "b.JPE", "c.tif", "d.TIFF"}) {
    std::string picture = exifPicture(name), sound = path("rec/123456789.wav");
    const ExifPicture before(picture);
    EXPECT_EQ(attach(picture, sound), 1);
    EXPECT_EQ(picture, path(name));
    EXPECT_EQ(test::readFile(path(sound)), "RIFF");  // the name alone, in the picture's directory
    const ExifPicture after(picture);
    EXPECT_EQ(after.all.exif.relatedSoundFile, sound);
    EXPECT_STREQ(after.all.primary.software, "Host");
    EXPECT_STREQ(after.all.primary.make, "Maker");
    EXPECT_EQ(after.all.gps.gpsAltitude.numerator, 8848u);
    auto expected = before.sizes();
    ++expected[0];
    ++expected[1];
    EXPECT_EQ(after.sizes(), expected);
  }
  EXPECT_EQ(names().count("12345604.wav"), 1u);
}

TEST_F(AddAudioTest, TouchesNothingThatItRefusesOrCannotCopy) {
  const std::string picture = plainPicture("b.png"), sound = path("rec/voice.wav");
  std::string noPath;
  EXPECT_EQ(addAudio(noPath, "Host"), 0);
  expectUntouched(0, "", sound);
  std::filesystem::create_directory(path("a.d"));
  expectUntouched(0, path("a.d/picture"), sound);
  EXPECT_TRUE(std::filesystem::is_empty(path("a.d")));
  expectUntouched(0, picture, "");
  expectUntouched(0, picture, path(""));  // already where its copy would go
  expectUntouched(0, picture, path("rec/gone.wav"));
  // Two NULs end the shell's 260 bytes.
  expectUntouched(0, picture, path("rec") + std::string(259 - sound.size(), '/') + "/voice.wav");
  std::string whole = picture;
  std::string longest = path("rec") + std::string(258 - sound.size(), '/') + "/voice.wav";
  EXPECT_EQ(attach(whole, longest), 1);
  const HostBuffer buffer(picture);
  EXPECT_EQ(AddAudio(buffer.bytes.get(), "Host", nullptr, nullptr), 0);
}

TEST_F(AddAudioTest, TouchesNothingWhenTheUserCancels) {
  const std::string picture = exifPicture("a.jpg"), sound = path("rec/voice.wav");
  test::writeFile(path("voice.wav"), "old");
  expectUntouched(2, picture, sound);  // nobody to ask
  ShellCopyHandler handler;
  handler.mayOverwrite = [](void*, HWND, const char*, const char*) { return true; };
  handler.progress = [](void*, HWND, std::uint64_t, std::uint64_t) { return false; };
  SetShellCopyHandler(handler);
  expectUntouched(2, picture, sound);
  EXPECT_EQ(test::readFile(path("voice.wav")), "old");
}

// Nobody can be asked here, so that any copy over a file would be refused.
TEST_F(AddAudioTest, TakesARecordingThatIsInPlaceAsItIs) {
  std::string picture = exifPicture("rec/a.jpg");
  std::filesystem::create_hard_link(path("rec/voice.wav"), path("voice.wav"));
  std::filesystem::create_symlink("voice.wav", path("rec/link.wav"));
  std::filesystem::create_symlink("rec/voice.wav", path("link.wav"));
  for (const char* name :
       {"rec/voice.wav", "./rec/voice.wav", "voice.wav", "rec/link.wav", "link.wav"}) {
    std::string sound = path(name);
    EXPECT_EQ(attach(picture, sound), 1) << name;
    EXPECT_EQ(test::readFile(path("rec/voice.wav")), "RIFF");
  }
  // By the text alone: no such file is there, and the directories differ in case.
  std::string sound = path("REC/gone.wav");
  EXPECT_EQ(attach(picture, sound), 1);
  EXPECT_STREQ(ExifPicture(picture).all.exif.relatedSoundFile, "gone.wav");
}

TEST_F(AddAudioTest, LeavesTheRecordingWhenThePictureCannotBeRewritten) {
  for (const auto& [before, after] : {std::pair(plainPicture("b.png"), path("b.jpg")),
                                      {exifPicture("c.jpg"), path("c.jpg")},
                                      {exifPicture("d.tif"), path("d.tif")}}) {
    std::string picture = before, sound = path("rec/voice.wav");
    const std::string bytes = test::readFile(before);
    std::filesystem::remove(path("voice.wav"));
    clearFailures();
    failCall(PlatformCall::lock, 3);  // the codec has written the picture by then
    EXPECT_EQ(attach(picture, sound), 0);
    EXPECT_EQ(picture, after);
    EXPECT_EQ(sound, "voice.wav");
    EXPECT_EQ(test::readFile(before), bytes);
    EXPECT_EQ(names(), (std::set<std::string>{"b.png", "c.jpg", "d.tif", "rec", "voice.wav"}));
  }
}

TEST_F(AddAudioTest, GetSoundFileWritesAWavNameAndNothingElse) {
  for (const auto& [name, isWav] :
       std::initializer_list<std::pair<std::string, bool>>{{"SOUND.WAV", true},
                                                           {"a.Wav", true},
                                                           {"a.wav.x", true},
                                                           {"123456789.wav", true},
                                                           {"SOUND.wAv", false},
                                                           {"wav", false},
                                                           {"", false}}) {
    test::writeFile(path("a.jpg"), test::exifJpeg("Maker", name));
    const HostBuffer buffer(std::string(14, '#'));
    EXPECT_EQ(GetSoundFile(path("a.jpg").c_str(), buffer.bytes.get()), isWav);
    EXPECT_EQ(buffer.bytes.get(), isWav ? name : std::string(14, '#'));
  }
}

}  // namespace
}  // namespace exifkeep
