// SPDX-License-Identifier: MIT
// Calls every export with every kind of platform call failing at the first call, the second, and so
// on until the export makes no more calls: once, once on a full disk, or permanently from then on.
// Whatever fails, the result must be a permitted one, nothing may leak, no temporary file may be
// left, and the destination must be the old file or the complete new one with all metadata.
#include <map>
#include <thread>

#include "failure_switch.h"
#include "failures/saved_pictures.h"
#include "info/memory_meter.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

// Everything that a call needs, created before anything may fail.
struct Arguments {
  std::string source, destination, sound;
  PRaster image, thumbnail;
};

int save(Arguments& arguments);

struct Scenario {
  const char* name;
  std::string source, destination;  // the latter is the file that the call writes, or empty
  int (*call)(Arguments& arguments);
  std::set<int> results = {0, 1};  // the permitted results; 1 is success
  std::string sound = {};          // other files that it may leave

  bool hasMetadata() const { return source.starts_with("source") || call != save; }
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
    {"IsExifFile", "source.jpg", "", [](Arguments& all) { return IsExifFile(all.source.c_str()); }},
    {"GetExifVersion", "source.jpg", "",
     [](Arguments& all) { return int{GetExifVersion(all.source.c_str()) > 2}; }},
    {"GetExifInfo", "source.jpg", "", list},
    {"GetSoundFile", "source.jpg", "", sound},
    {"OpenJpeg", "source.jpg", "", open},
    {"OpenTiff", "source.tif", "", open},
    {"SaveNewJpeg", "source.jpg", "new.jpg", save},
    {"SaveOverAnotherJpeg", "source.jpg", "plain.jpg", save},
    {"SaveJpegOverItself", "source.jpg", "source.jpg", save},
    {"SaveNewTiff", "source.tif", "new.tif", save},
    {"SaveTiffOverItself", "source.tif", "source.tif", save},
    {"SaveNewPng", "plain.jpg", "new.png", save},
    {"AddAudioToJpeg", "source.jpg", "source.jpg", addAudio},
    {"AddAudioToTiff", "source.tif", "source.tif", addAudio},
    {"AddAudioToPlainJpeg", "plain.jpg", "plain.jpg", addAudio},
    {"AddAudioToPlainTiff", "plain.tif", "plain.tif", addAudio},
    {"AddAudioFile", "source.jpg", "source.jpg", addAudioFile, {0, 1, 2}, "voice 01.wav"},
};

// How calls fail: only the n-th of a kind; that one and all writes; the n-th and all later ones of
// its kind.
enum class Mode { once, onceOnFullDisk, always };
constexpr Mode modes[] = {Mode::once, Mode::onceOnFullDisk, Mode::always};
constexpr int newOrMalloc = static_cast<int>(PlatformCall::kinds);

class FailingCalls : public SavedPictures, public testing::WithParamInterface<Scenario> {
 protected:
  FailingCalls() {
    // The message box for an unknown extension is also shown if the codec cannot list its formats.
    AfxSetMessageBoxHandler([](void*, const char*, UINT) { return IDOK; }, nullptr);
    for (const char* name : {"plain.jpg", "plain.tif"}) {
      PRaster picture = makePicture(oldWidth);
      EXPECT_EQ(::save(path(name), picture), 1);
    }
    writeFile(path("voice recording.wav"), "RIFF");
    originals_ = files();
  }
  ~FailingCalls() override { AfxSetMessageBoxHandler(nullptr, nullptr); }

  // Runs the scenario with failing calls of a kind. False if it made fewer than n.
  bool run(const Scenario& scenario, Mode mode, int kind, int n) {
    restore();
    Arguments arguments{path(scenario.source),
                        path(scenario.destination),
                        path("voice recording.wav"),
                        makePicture(newWidth),
                        {}};
    const int handles = openHandles(), blocks = liveBlocks(), palettes = livePalettes();
    const bool always = mode == Mode::always;
    const auto call = static_cast<PlatformCall>(kind);
    if (mode == Mode::onceOnFullDisk) failCall(PlatformCall::write, 1, true);
    if (kind != newOrMalloc) failCall(call, n, always);
    failAllocations(kind == newOrMalloc ? n : 0, always);
    const int result = scenario.call(arguments);
    const int failed = kind == newOrMalloc ? allocationsFailed() : callsMade(call) - n + 1;
    const bool isFull = mode == Mode::onceOnFullDisk && callsMade(PlatformCall::write) > 0;
    failAllocations(0);
    clearFailures();
    failures_ += std::max(always ? failed : failed > 0, 0);

    EXPECT_TRUE(scenario.results.contains(result)) << "result " << result;
    EXPECT_EQ(openHandles(), handles);
    EXPECT_EQ(liveBlocks(), blocks);
    EXPECT_EQ(livePalettes(), palettes);
    checkFiles(scenario, result, !(always && call == PlatformCall::remove));
    EXPECT_TRUE(failed > 0 || isFull || result == 1) << "nothing failed";
    return failed > 0;
  }

  // After a success there must be a complete new picture, after a failure the old one or none.
  // Files that cannot be deleted are left in the temporary folder.
  void checkFiles(const Scenario& scenario, int result, bool canRemove) const {
    const bool isWritten = result == 1 && !scenario.destination.empty();
    Files found = files(), expected = originals_;
    found.erase(scenario.sound);
    if (!canRemove)
      std::erase_if(found, [](const auto& file) { return file.first.starts_with("tmp/"); });
    if (isWritten) {
      const std::string destination = path(scenario.destination);
      EXPECT_EQ(widthOf(destination), newWidth);
      EXPECT_EQ(IsExifFile(destination.c_str()), scenario.hasMetadata());
      found.erase(scenario.destination);
      expected.erase(scenario.destination);
    }
    for (const auto& [name, bytes] : found) EXPECT_TRUE(expected[name] == bytes) << name;
    EXPECT_EQ(found.size(), expected.size());
  }

  int failures_ = 0;
};

TEST_P(FailingCalls, LoseNothing) {
  const Scenario& scenario = GetParam();
  for (const Mode mode : modes)
    for (int kind = 0; kind <= newOrMalloc; ++kind)
      for (int n = 1, goesOn = 1; goesOn && !HasFailure(); ++n) {
        // Each in a new thread, so that initialisation per thread fails too.
        std::thread([&] {
          SCOPED_TRACE(scenario.source + " to " + scenario.destination + ": mode " +
                       std::to_string(static_cast<int>(mode)) + ", kind " + std::to_string(kind) +
                       ", call " + std::to_string(n));
          goesOn = run(scenario, mode, kind, n);
        }).join();
      }
  EXPECT_GT(failures_, 10);
  RecordProperty("failures", failures_);
}

INSTANTIATE_TEST_SUITE_P(, FailingCalls, testing::ValuesIn(scenarios),
                         [](const auto& scenario) { return scenario.param.name; });

}  // namespace
}  // namespace exifkeep::test
