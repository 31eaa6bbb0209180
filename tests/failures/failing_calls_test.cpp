// Every export with every kind of platform call failing once, at the first call, the second, and so
// on until the export no longer makes that many. Whatever fails, the result is one that the export
// may give, nothing leaks, no temporary file stays, and a destination is the old file or the whole
// new one.
#include <exifkeep/exifkeep.h>
#include <failure_switch.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>

#include "imageio/image_codec_bridge.h"
#include "info/memory_meter.h"

namespace fs = std::filesystem;
using exifkeep::PlatformCall;

namespace {

constexpr unsigned width = 40, height = 30;

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void makePicture(PRaster& picture, unsigned shade) {
  ASSERT_TRUE(picture.CreateImage(PRaster::type24Bit, width, height, 0, 0, 2835, 2835));
  for (unsigned y = 0; y < height; ++y) std::memset(picture.row(y), int(shade + y), width * 3);
}

// A folder with a picture of every kind, the same before every call.
class Folder {
 public:
  Folder() {
    char name[] = "/tmp/exifkeep-failures-XXXXXX";
    path_ = mkdtemp(name);
    PRaster picture;
    makePicture(picture, 10);
    for (const char* source : {"source.jpg", "source.tif"}) addMetadata(source, picture);
    for (const char* plain : {"plain.jpg", "plain.tif"})
      EXPECT_EQ(SaveFile("none", file(plain).c_str(), &picture, nullptr), 1);
    std::ofstream(path_ / "voice recording.wav") << "RIFF";
    for (const auto& entry : fs::directory_iterator(path_))
      originals_[entry.path().filename()] = bytesOf(entry.path());
  }
  ~Folder() { fs::remove_all(path_); }

  std::string file(const std::string& name) const { return path_ / name; }

  void restore() const {
    for (const auto& entry : fs::directory_iterator(path_)) fs::remove(entry.path());
    for (const auto& [name, bytes] : originals_) std::ofstream(path_ / name) << bytes;
  }
  bool isOriginal(const std::string& name) const {
    const auto original = originals_.find(name);
    return original == originals_.end() ? !fs::exists(path_ / name)
                                        : bytesOf(path_ / name) == original->second;
  }
  // What is there and is neither an original nor one of the two.
  std::set<std::string> strangers(const std::string& destination, const std::string& sound) const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) names.insert(entry.path().filename());
    for (const auto& [name, bytes] : originals_) names.erase(name);
    names.erase(destination);
    names.erase(sound);
    return names;
  }

 private:
  void addMetadata(const char* name, PRaster& picture) {
    std::string path = file(name);
    EXPECT_EQ(AddAudio(path.data(), "a test", &picture, nullptr), 1);
    path.assign(file(name));
  }

  fs::path path_;
  std::map<std::string, std::string> originals_;
};

// What a call needs, made before anything may fail.
struct Arguments {
  std::string source, destination, sound;
  PRaster image, thumbnail;
};

struct Scenario {
  std::string source, destination;  // the latter is what the call writes; empty: nothing
  int (*call)(Arguments& arguments);
  std::set<int> results = {0, 1};  // those it may give; 1 is success
  std::string sound = {};          // what it may leave besides
};

int list(Arguments& arguments) {
  CPtrList items;
  const int result = GetExifInfo(arguments.source.c_str(), &items);
  EXPECT_EQ(items.IsEmpty(), result == 0);
  EXPECT_EQ(FreeInfoList(&items), 1);
  return result;
}

int probe(Arguments& arguments) {
  return IsExifFile(arguments.source.c_str());
}

int version(Arguments& arguments) {
  return GetExifVersion(arguments.source.c_str()) == 2.1f ? 1 : 0;
}

int sound(Arguments& arguments) {
  char name[15] = "untouched";
  const int result = GetSoundFile(arguments.source.c_str(), name);
  EXPECT_STREQ(name, result ? "source.wav" : "untouched");
  return result;
}

int open(Arguments& arguments) {
  return OpenExifFile(arguments.source.c_str(), &arguments.image, &arguments.thumbnail);
}

int save(Arguments& arguments) {
  return SaveProcessFile(arguments.source.c_str(), arguments.destination.c_str(), 2,
                         &arguments.image, nullptr);
}

int addAudio(Arguments& arguments) {
  return AddAudio(arguments.source.data(), "program", &arguments.image, nullptr);
}

int addAudioFile(Arguments& arguments) {
  return AddAudioFile(arguments.source.data(), "program", arguments.sound.data(), &arguments.image,
                      nullptr, nullptr);
}

const Scenario scenarios[] = {
    {"source.jpg", "", probe},
    {"source.jpg", "", list},
    {"source.jpg", "", version},
    {"source.jpg", "", sound},
    {"source.jpg", "", open},
    {"source.tif", "", open},
    {"source.jpg", "new.jpg", save},
    {"source.jpg", "plain.jpg", save},
    {"source.jpg", "source.jpg", save},
    {"source.tif", "new.tif", save},
    {"source.tif", "source.tif", save},
    {"plain.jpg", "new.png", save},
    {"source.jpg", "source.jpg", addAudio},
    {"source.tif", "source.tif", addAudio},
    {"plain.jpg", "plain.jpg", addAudio},
    {"plain.tif", "plain.tif", addAudio},
    {"source.jpg", "source.jpg", addAudioFile, {0, 1, 2}, "voice 01.wav"},
};

// A success shows in a whole new picture, a failure in the old one. Metadata may be missing from
// the new one: a source that cannot be read counts as one without.
void checkDestination(const Folder& folder, const Scenario& scenario, int result) {
  if (scenario.destination.empty()) return;
  if (result != 1) {
    EXPECT_TRUE(folder.isOriginal(scenario.destination));
    return;
  }
  EXPECT_FALSE(folder.isOriginal(scenario.destination));
  const auto image =
      exifkeep::ImageCodecBridge().loadImageFile(folder.file(scenario.destination).c_str());
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->width(), width);
  EXPECT_EQ(image->height(), height);
}

class EveryCallFails : public testing::TestWithParam<size_t> {
 protected:
  // Runs the scenario with the n-th call of a kind failing; false when it made fewer calls.
  bool run(const Folder& folder, const Scenario& scenario, int kind, int n) {
    folder.restore();
    Arguments arguments{folder.file(scenario.source),
                        folder.file(scenario.destination),
                        folder.file("voice recording.wav"),
                        {},
                        {}};
    makePicture(arguments.image, 90);
    const int handles = exifkeep::openHandles(), blocks = exifkeep::liveBlocks(),
              palettes = exifkeep::livePalettes();
    exifkeep::clearFailures();
    const bool isNew = kind == static_cast<int>(PlatformCall::kinds);
    if (!isNew) exifkeep::failCall(static_cast<PlatformCall>(kind), n);
    exifkeep::test::failAllocations(isNew ? n : 0);
    const int result = scenario.call(arguments);
    const bool hasFailed = isNew ? exifkeep::test::allocationsFailed() > 0
                                 : exifkeep::callsMade(static_cast<PlatformCall>(kind)) >= n;
    exifkeep::test::failAllocations(0);
    exifkeep::clearFailures();

    EXPECT_TRUE(scenario.results.contains(result)) << "result " << result;
    EXPECT_EQ(exifkeep::openHandles(), handles);
    EXPECT_EQ(exifkeep::liveBlocks(), blocks);
    EXPECT_EQ(exifkeep::livePalettes(), palettes);
    checkDestination(folder, scenario, result);
    EXPECT_EQ(folder.strangers(scenario.destination, scenario.sound), std::set<std::string>{});
    EXPECT_TRUE(hasFailed || result == 1) << "nothing failed";
    return hasFailed;
  }
};

// The box for a name that cannot be written also shows when the codec cannot tell its formats.
int silence(void*, const char*, UINT) {
  return IDOK;
}

TEST_P(EveryCallFails, AndTheResultIsOneOfThoseSpecified) {
  const Folder folder;
  AfxSetMessageBoxHandler(silence, nullptr);
  const Scenario& scenario = scenarios[GetParam()];
  int failures = 0;
  for (int kind = 0; kind <= static_cast<int>(PlatformCall::kinds); ++kind) {
    for (int n = 1;; ++n) {
      SCOPED_TRACE(scenario.source + " to " + scenario.destination + ": kind " +
                   std::to_string(kind) + ", call " + std::to_string(n));
      if (!run(folder, scenario, kind, n) || HasFailure()) break;
      ++failures;
    }
  }
  RecordProperty("failures", failures);
  EXPECT_GT(failures, 3);
}

INSTANTIATE_TEST_SUITE_P(AllExports, EveryCallFails,
                         testing::Range(size_t{0}, std::size(scenarios)));

}  // namespace
