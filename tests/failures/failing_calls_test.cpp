// Every export with every kind of platform call failing once, at the first call, the second, and so
// on until the export no longer makes that many. Whatever fails, the result is one that the export
// may give, nothing leaks, no temporary file stays, and a destination is the old file or the whole
// new one.
#include <failure_switch.h>

#include <map>

#include "failures/saved_pictures.h"
#include "info/memory_meter.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned width = 40;
using Files = std::map<std::string, std::string>;  // names and bytes

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
    {"source.jpg", "", [](Arguments& all) { return IsExifFile(all.source.c_str()); }},
    {"source.jpg", "", [](Arguments& all) { return int{GetExifVersion(all.source.c_str()) > 2}; }},
    {"source.jpg", "", list},
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

class EveryCallFails : public SavedPictures, public testing::WithParamInterface<size_t> {
 protected:
  EveryCallFails() {
    // The box for a name that cannot be written also shows when the codec cannot tell its formats.
    AfxSetMessageBoxHandler([](void*, const char*, UINT) { return IDOK; }, nullptr);
    for (const char* name : {"source.jpg", "source.tif"}) saveWithMetadata(name, 20);
    for (const char* name : {"plain.jpg", "plain.tif"}) savePlain(name, 20);
    writeFile(path("voice recording.wav"), "RIFF");
    originals_ = files();
  }
  ~EveryCallFails() override { AfxSetMessageBoxHandler(nullptr, nullptr); }

  Files files() const {
    Files all;
    for (const std::string& name : names()) all[name] = readFile(path(name));
    return all;
  }
  void restore() const {
    for (const std::string& name : names()) fs::remove(path(name));
    for (const auto& [name, bytes] : originals_) writeFile(path(name), bytes);
  }

  // Runs the scenario with the n-th call of a kind failing; false when it made fewer calls.
  bool run(const Scenario& scenario, int kind, int n) {
    restore();
    Arguments arguments{path(scenario.source),
                        path(scenario.destination),
                        path("voice recording.wav"),
                        makePicture(width),
                        {}};
    const int handles = openHandles(), blocks = liveBlocks(), palettes = livePalettes();
    clearFailures();
    const bool isNew = kind == static_cast<int>(PlatformCall::kinds);
    if (!isNew) failCall(static_cast<PlatformCall>(kind), n);
    failAllocations(isNew ? n : 0);
    const int result = scenario.call(arguments);
    const bool hasFailed =
        isNew ? allocationsFailed() > 0 : callsMade(static_cast<PlatformCall>(kind)) >= n;
    failAllocations(0);
    clearFailures();

    EXPECT_TRUE(scenario.results.contains(result)) << "result " << result;
    EXPECT_EQ(openHandles(), handles);
    EXPECT_EQ(liveBlocks(), blocks);
    EXPECT_EQ(livePalettes(), palettes);
    checkFiles(scenario, result);
    EXPECT_TRUE(hasFailed || result == 1) << "nothing failed";
    return hasFailed;
  }

  // A success shows in a whole new picture, a failure in the old one, or none. Metadata may be
  // missing from the new one: a source that cannot be read counts as one without.
  void checkFiles(const Scenario& scenario, int result) const {
    const bool isWritten = result == 1 && !scenario.destination.empty();
    Files found = files(), expected = originals_;
    found.erase(scenario.sound);
    if (isWritten) {
      EXPECT_EQ(widthOf(path(scenario.destination)), width);
      found.erase(scenario.destination);
      expected.erase(scenario.destination);
    }
    EXPECT_TRUE(found == expected) << testing::PrintToString(names());
  }

  Files originals_;
};

TEST_P(EveryCallFails, AndTheResultIsOneOfThoseSpecified) {
  const Scenario& scenario = scenarios[GetParam()];
  int failures = 0;
  for (int kind = 0; kind <= static_cast<int>(PlatformCall::kinds); ++kind) {
    for (int n = 1;; ++n) {
      SCOPED_TRACE(scenario.source + " to " + scenario.destination + ": kind " +
                   std::to_string(kind) + ", call " + std::to_string(n));
      if (!run(scenario, kind, n) || HasFailure()) break;
      ++failures;
    }
  }
  EXPECT_GT(failures, 3);
}

INSTANTIATE_TEST_SUITE_P(AllExports, EveryCallFails,
                         testing::Range(size_t{0}, std::size(scenarios)));

}  // namespace
}  // namespace exifkeep::test
