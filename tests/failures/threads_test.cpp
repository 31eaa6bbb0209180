// Eight threads at once, each calling all ten functions: on sources that they share and on
// destinations of their own. What each gets is what it would have got alone.
#include <exifkeep/exifkeep.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "imageio/image_codec_bridge.h"

namespace fs = std::filesystem;

namespace {

constexpr int threads = 8, rounds = 6;
constexpr unsigned height = 16;

PRaster makePicture(unsigned width) {
  PRaster picture;
  EXPECT_EQ(picture.CreateImage(PRaster::type24Bit, width, height), 1);
  for (unsigned y = 0; y < height; ++y) std::memset(picture.row(y), int(width * y), width * 3);
  return picture;
}

std::string listing(const std::string& path) {
  CPtrList list;
  std::string text;
  EXPECT_EQ(GetExifInfo(path.c_str(), &list), 1);
  for (POSITION at = list.GetHeadPosition(); at;) {
    const auto* item = static_cast<const exifkeep::InfoItem*>(list.GetNext(at));
    text += std::string(item->label) + ": " + static_cast<const char*>(item->value) + "\n";
  }
  EXPECT_EQ(FreeInfoList(&list), 1);
  return text;
}

class ThreadsTest : public testing::Test {
 protected:
  ThreadsTest() {
    char name[] = "/tmp/exifkeep-threads-XXXXXX";
    folder_ = mkdtemp(name);
    std::ofstream(file("recording number one.wav")) << "RIFF";
    PRaster picture = makePicture(20);
    for (const char* extension : {"jpg", "tif"}) {
      std::string path = file(std::string("source.") + extension);
      EXPECT_EQ(SaveFile("none", path.c_str(), &picture, nullptr), 1);
      EXPECT_EQ(AddAudio(path.data(), "before the threads", &picture, nullptr), 1);
    }
  }
  ~ThreadsTest() override { fs::remove_all(folder_); }
  std::string file(const std::string& name) const { return folder_ / name; }

  void readSource(const std::string& source, const std::string& expectedListing) const {
    char sound[15] = {};
    PRaster image, thumbnail;
    EXPECT_EQ(IsExifFile(source.c_str()), 1);
    EXPECT_EQ(GetExifVersion(source.c_str()), 2.1f);
    EXPECT_EQ(listing(source), expectedListing);
    EXPECT_EQ(GetSoundFile(source.c_str(), sound), 1);
    EXPECT_STREQ(sound, "source.wav");
    EXPECT_EQ(OpenExifFile(source.c_str(), &image, &thumbnail), 1);
    EXPECT_EQ(image.width(), 20u);
    EXPECT_EQ(thumbnail.width(), 160u);
  }

  // Each thread saves pictures of a width that no other has.
  void write(const std::string& source, const std::string& destination, unsigned width) const {
    PRaster picture = makePicture(width);
    std::string path = destination, sound = file("recording number one.wav");
    EXPECT_EQ(SaveFile(source.c_str(), path.c_str(), &picture, nullptr), 1);
    expectPicture(path, width);
    EXPECT_EQ(SaveProcessFile(source.c_str(), path.c_str(), 3, &picture, nullptr), 1);
    expectPicture(path, width);
    EXPECT_EQ(AddAudio(path.data(), "a thread", &picture, nullptr), 1);
    expectPicture(path, width);
    EXPECT_EQ(AddAudioFile(path.data(), "a thread", sound.data(), &picture, nullptr, nullptr), 1);
    expectPicture(path, width);
    char name[15] = {};
    EXPECT_EQ(GetSoundFile(path.c_str(), name), 1);
    EXPECT_STREQ(sound.c_str(), name);
    EXPECT_TRUE(fs::exists(fs::path(path).replace_filename(name)));
  }

  static void expectPicture(const std::string& path, unsigned width) {
    EXPECT_EQ(IsExifFile(path.c_str()), 1);
    const auto image = exifkeep::ImageCodecBridge().loadImageFile(path.c_str());
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->width(), width);
  }

  fs::path folder_;
};

template <class Work>
void onEveryThread(Work work) {
  std::atomic<int> waiting = threads;
  std::vector<std::thread> all;
  for (int number = 0; number < threads; ++number)
    all.emplace_back([&waiting, &work, number] {
      for (--waiting; waiting > 0;) std::this_thread::yield();
      work(number);
    });
  for (std::thread& thread : all) thread.join();
}

TEST_F(ThreadsTest, AllFunctionsAtOnceAnswerAsAlone) {
  const std::string sources[] = {file("source.jpg"), file("source.tif")};
  const std::string listings[] = {listing(sources[0]), listing(sources[1])};
  onEveryThread([&](int number) {
    const fs::path own = folder_ / std::to_string(number);
    fs::create_directory(own);
    for (int round = 0; round < rounds; ++round) {
      const int kind = (number + round) % 2;
      readSource(sources[kind], listings[kind]);
      write(sources[kind], own / (kind ? "x.tif" : "x.jpg"), static_cast<unsigned>(24 + number));
    }
    // Two pictures and a recording a round; nothing temporary.
    EXPECT_EQ(std::distance(fs::directory_iterator(own), {}), 2 + rounds);
  });
}

// All pending files lie in one folder, so that a shared name would show in a wrong picture.
TEST_F(ThreadsTest, SavesIntoOneFolderDoNotMeet) {
  onEveryThread([&](int number) {
    PRaster picture = makePicture(static_cast<unsigned>(24 + number));
    const std::string path = file("picture" + std::to_string(number) + ".jpg");
    for (int round = 0; round < rounds; ++round) {
      EXPECT_EQ(SaveFile(file("source.jpg").c_str(), path.c_str(), &picture, nullptr), 1);
      expectPicture(path, static_cast<unsigned>(24 + number));
    }
  });
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), threads + 3);
}

TEST_F(ThreadsTest, TemporaryNamesAreNotShared) {
  std::mutex mutex;
  std::set<std::string> directories;
  onEveryThread([&](int) {
    char directory[MAX_PATH] = {};
    EXPECT_GT(GetTempPathA(sizeof directory, directory), 0u);
    const std::lock_guard lock(mutex);
    EXPECT_TRUE(directories.insert(directory).second) << directory;
  });
}

}  // namespace
