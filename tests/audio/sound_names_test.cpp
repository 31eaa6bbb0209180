// The names of recordings: the rules alone, then among files that are there already.
#include "audio/sound_names.h"

#include <gmock/gmock.h>

#include "audio/copy_recording.h"
#include "platform/scratch.h"
#include "system/path.h"

namespace exifkeep {
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

class RecordingDestination : public test::ScratchTest {};

TEST_F(RecordingDestination, IsAShortNameOfItsOwnOrTheFirstFreeOne) {
  const auto nameFor = [this](const std::string& sound) {
    const std::string destination = recordingDestination(path("a.jpg"), "/rec/" + sound);
    EXPECT_EQ(directoryOf(destination), path(""));
    return std::string(fileNameOf(destination));
  };
  test::writeFile(path("12345678.mp3"), "");
  EXPECT_EQ(nameFor("12345678.mp3"), "12345678.mp3");
  EXPECT_EQ(nameFor("123456789.wav"), "12345601.wav");
  test::makeLinkToNowhere(path("12345601.wav"));
  for (int n = 2; n < 99; ++n) test::writeFile(path(shortSoundName("123456789.wav", n)), "");
  EXPECT_EQ(nameFor("123456789.wav"), "12345699.wav");
  test::writeFile(path("12345699.wav"), "");
  const std::set<std::string> before = names();
  EXPECT_THAT(nameFor("123456789.wav"),
              testing::AllOf(testing::StartsWith("ADO"), testing::EndsWith(".wav")));
  EXPECT_EQ(names(), before);
  // A picture named without a directory lies in the current one, not in the root.
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(path(""));
  EXPECT_THAT(recordingDestination("a.jpg", "123456789.wav"),
              testing::StartsWith(std::string{'.', pathSeparator} + "ADO"));
  std::filesystem::current_path(home);
}

}  // namespace
}  // namespace exifkeep
