// SPDX-License-Identifier: MIT
#include <exifkeep/exifkeep.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "audio/copy_recording.h"
#include "audio/sound_names.h"
#include "codec/picture_fixture.h"
#include "platform/scratch.h"
#include "read/reading.h"
#include "system/path.h"

namespace exifkeep::test {
namespace {

TEST(SoundNames, AreMadeFromThePicturesName) {
  const std::pair<const char*, const char*> cases[] = {
      {"DSC00123.JPG", "DSC00123.wav"},
      {"pics.d/IMG_00001.JPG", "IMG_00~1.wav"},
      {"1.3.5.789.jpg", "1.3.5.~1.wav"},
      {"pics.d/a long name", ".wav"},
      {"12345\x83\x41\x83\x41.jpg", "12345\x83~1.wav"},  // through a double-byte character
  };
  for (const auto& [picture, sound] : cases) EXPECT_EQ(soundNameForPicture(picture), sound);
}

TEST(SoundNames, AreShortenedAtACharacter) {
  const std::tuple<const char*, int, const char*> cases[] = {
      {"Recording at the beach.mp3", 99, "Record99.wav"},
      {"abcd\x83\x41 and more.wav", 7, "abcd\x83\x41\x30\x37.wav"},
      {"abcde\x83\x41 and more.wav", 7, "abcde007.wav"},
      // A second byte may look like a first one.
      {"a\xE3\x81\x82\xE3\x81\x82 and more.wav", 1, "a\xE3\x81\x82\xE3\x30\x30\x31.wav"},
  };
  for (const auto& [name, n, expected] : cases) EXPECT_EQ(shortSoundName(name, n), expected);
}

class RecordingDestination : public ScratchTest {};

TEST_F(RecordingDestination, IsItsOwnNameOrTheFirstUnusedShortOne) {
  const auto nameFor = [this](const std::string& sound) {
    const std::string destination = recordingDestination(path("a.jpg"), "/rec/" + sound);
    EXPECT_EQ(directoryOf(destination), path(""));
    return std::string(fileNameOf(destination));
  };
  writeFile(path("12345678.mp3"), "");
  EXPECT_EQ(nameFor("12345678.mp3"), "12345678.mp3");
  EXPECT_EQ(nameFor("123456789.wav"), "12345601.wav");
  makeLinkToNowhere(path("12345601.wav"));
  for (int n = 2; n < 99; ++n) writeFile(path(shortSoundName("123456789.wav", n)), "");
  EXPECT_EQ(nameFor("123456789.wav"), "12345699.wav");
  writeFile(path("12345699.wav"), "");
  const std::set<std::string> before = names();
  EXPECT_THAT(nameFor("123456789.wav"),
              testing::AllOf(testing::StartsWith("ADO"), testing::EndsWith(".wav")));
  EXPECT_EQ(names(), before);
  // A picture without a directory in its name is in the current one, not in the root.
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(path(""));
  EXPECT_THAT(recordingDestination("a.jpg", "123456789.wav"),
              testing::StartsWith(std::string{'.', pathSeparator} + "ADO"));
  std::filesystem::current_path(home);
}

// A text in memory of its exact size, so that sanitizers detect a longer one written back.
struct HostBuffer : std::unique_ptr<char[]> {
  explicit HostBuffer(const std::string& text) : unique_ptr(new char[text.size() + 1]) {
    std::strcpy(get(), text.c_str());
  }
};

class AddAudioTest : public ScratchTest {
 protected:
  AddAudioTest() {
    image_.CreateImage(PRaster::type8Bit, 64, 48);
    std::filesystem::create_directory(path("rec"));
    writeFile(path("rec/voice.wav"), "RIFF");
  }

  std::string plainPicture(const std::string& name) {
    EXPECT_EQ(save(path(name), image_), 1);
    return path(name);
  }
  // No pixels, but every directory has an entry.
  std::string exifPicture(const std::string& name, const std::string& soundFile = "") {
    Picture picture = {.image = {text(0x010F, "Maker"), exifPointer(), gpsPointer()},
                       .exif = {bytes(0x9000, "0220")},
                       .gps = {rationals(6, {8848, 1})},
                       .thumbnail = {text(0x8298, "Somebody")}};
    if (!soundFile.empty()) picture.exif.push_back(bytes(0xA004, soundFile, typeAscii));
    const std::string tiff = tiffBytes(picture, Order::mm);
    writeFile(path(name), isTiffName(name) ? tiff : jpegBytes(tiff));
    return path(name);
  }

  // Calls AddAudioFile and updates the texts from the host's buffers.
  int attach(std::string& picture, std::string& sound) {
    const HostBuffer pictureBuffer(picture), soundBuffer(sound);
    const int result =
        AddAudioFile(pictureBuffer.get(), "Host", soundBuffer.get(), &image_, nullptr, nullptr);
    picture = pictureBuffer.get();
    sound = soundBuffer.get();
    return result;
  }
  void expectUntouched(int result, const std::string& picture, const std::string& sound) {
    std::string pictureAfter = picture, soundAfter = sound;
    const std::string bytes = readFile(picture);
    const std::set<std::string> files = names();
    EXPECT_EQ(attach(pictureAfter, soundAfter), result) << picture << ' ' << sound;
    EXPECT_EQ(pictureAfter + soundAfter, picture + sound);
    EXPECT_EQ(readFile(picture), bytes);
    EXPECT_EQ(names(), files);
  }

  PRaster image_;
};

TEST_F(AddAudioTest, GivesAPlainPictureExifData) {
  for (const auto& [before, after, sound] :
       {std::tuple("scan.png", "scan.jpg", "scan.wav"),
        {"Long page name.tif", "Long page name.tif", "Long p~1.wav"}}) {
    const HostBuffer picture(plainPicture(before));
    EXPECT_EQ(AddAudio(picture.get(), std::string(300, 's').c_str(), &image_, nullptr), 1);
    EXPECT_EQ(picture.get(), path(after));
    const Reading written(path(after));
    EXPECT_STREQ(written.exif.relatedSoundFile, sound);
    EXPECT_EQ(written.primary.software, std::string(255, 's'));
    EXPECT_TRUE(std::filesystem::exists(path(before)));
    EXPECT_EQ(image_.GetImageType(), PRaster::type24Bit);
  }
}

TEST_F(AddAudioTest, KeepsTheMetadataOfAnExifPicture) {
  writeFile(path("rec/123456789.wav"), "RIFF");
  for (const char* name : {"b.JPE", "c.tif"}) {
    std::string picture = exifPicture(name), sound = path("rec/123456789.wav");
    EXPECT_EQ(attach(picture, sound), 1);
    EXPECT_EQ(picture, path(name));
    EXPECT_EQ(readFile(path(sound)), "RIFF");  // only the name, in the picture's directory
    const Reading after(picture);
    EXPECT_EQ(after.exif.relatedSoundFile, sound);
    EXPECT_STREQ(after.primary.software, "Host");
    EXPECT_STREQ(after.primary.make, "Maker");
    EXPECT_EQ(after.gps.gpsAltitude.numerator, 8848u);
    EXPECT_EQ(after.exif.hasExifVersion, 1u);
    EXPECT_STREQ(after.thumbnail.copyright, "Somebody");
  }
  EXPECT_EQ(names().count("12345602.wav"), 1u);
}

TEST_F(AddAudioTest, ChangesNothingIfItFails) {
  const std::string picture = plainPicture("b.png"), sound = path("rec/voice.wav");
  expectUntouched(0, "", sound);
  std::filesystem::create_directory(path("a.d"));
  int boxes = 0;
  AfxSetMessageBoxHandler(
      [](void* shown, const char*, UINT) { return ++*static_cast<int*>(shown), IDOK; }, &boxes);
  for (const char* name : {"a.d/picture", "jpg", "tif"}) expectUntouched(0, path(name), sound);
  EXPECT_EQ(AddAudio(HostBuffer("jpg").get(), "Host", &image_, nullptr), 0);
  EXPECT_EQ(boxes, 4) << "as for a save under such a name";
  AfxSetMessageBoxHandler(nullptr, nullptr);
  expectUntouched(0, picture, "");
  expectUntouched(0, picture, path(""));  // already at the destination
  expectUntouched(0, picture, path("rec/gone.wav"));
  // Two NULs terminate the shell's 260 bytes.
  expectUntouched(0, picture, path("rec") + std::string(259 - sound.size(), '/') + "/voice.wav");
  std::string whole = picture,
              longest = path("rec") + std::string(258 - sound.size(), '/') + "/voice.wav";
  EXPECT_EQ(attach(whole, longest), 1);
  expectUntouched(2, picture, sound);  // cancelled: the file exists, and there is nobody to ask
  EXPECT_EQ(AddAudio(HostBuffer("").get(), "Host", &image_, nullptr), 0);
  EXPECT_EQ(AddAudio(HostBuffer(picture).get(), "Host", nullptr, nullptr), 0);
}

// There is nobody to ask, so that copying over a file would be refused.
TEST_F(AddAudioTest, DoesNotCopyARecordingThatIsInPlace) {
  std::string picture = exifPicture("rec/a.jpg");
  std::filesystem::create_hard_link(path("rec/voice.wav"), path("voice.wav"));
  // For the second only the texts are compared: there is no such file, and the directories differ
  // in case.
  std::vector<const char*> inPlace = {"rec/voice.wav", "REC/gone.wav"};
  if (pathSeparator == '/') inPlace.insert(inPlace.begin(), "voice.wav");  // other shells ask
  for (const char* name : inPlace) {
    std::string sound = path(name);
    EXPECT_EQ(attach(picture, sound), 1) << name;
    EXPECT_EQ(readFile(path("rec/voice.wav")), "RIFF");
  }
  EXPECT_STREQ(Reading(picture).exif.relatedSoundFile, "gone.wav");
}

TEST_F(AddAudioTest, GetSoundFileWritesAWavNameAndNothingElse) {
  const std::string other(14, '#');
  const std::pair<const char*, bool> cases[] = {
      {"SOUND.WAV", true}, {"a.Wav", true}, {"a.wav.x", true}, {"SOUND.wAv", false}, {"", false}};
  for (const auto& [name, isWav] : cases) {
    exifPicture("a.jpg", name);
    const HostBuffer buffer(other);
    EXPECT_EQ(GetSoundFile(path("a.jpg").c_str(), buffer.get()), isWav);
    EXPECT_EQ(buffer.get(), isWav ? name : other);
  }
}

}  // namespace
}  // namespace exifkeep::test
