// SPDX-License-Identifier: MIT
// Eight threads call all ten functions at once, with shared sources and their own destinations.
// Each must get the same results as it would alone.
#include <pthread.h>

#include <atomic>
#include <thread>
#include <vector>

#include "failures/saved_pictures.h"
#include "read/reading.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

constexpr int threads = 8, rounds = 6;

class ThreadsTest : public SavedPictures {
 protected:
  ThreadsTest() { fs::create_directory(path("rec")); }

  static void readSource(const std::string& source, const Items& expectedItems) {
    char sound[15] = {};
    PRaster image, thumbnail;
    EXPECT_EQ(IsExifFile(source.c_str()), 1);
    EXPECT_EQ(GetExifVersion(source.c_str()), 2.1f);
    EXPECT_EQ(itemsOf(source), expectedItems);
    EXPECT_EQ(GetSoundFile(source.c_str(), sound), 1);
    EXPECT_STREQ(sound, "source.wav");
    EXPECT_EQ(OpenExifFile(source.c_str(), &image, &thumbnail), 1);
    EXPECT_EQ(image.width(), oldWidth);
    EXPECT_EQ(thumbnail.width(), 160u);
  }

  // No other thread has the same `own` or `width`.
  void write(const std::string& source, const std::string& own, unsigned width) const {
    PRaster picture = makePicture(width);
    const std::string extension = fs::path(source).extension().string();
    std::string destination = path(own) + extension, sound = path("rec/" + own + ".wav");
    const char *from = source.c_str(), *program = "a thread";
    char* to = destination.data();
    const auto expectSaved = [&](int result) {
      EXPECT_EQ(result, 1);
      EXPECT_EQ(widthOf(destination), width);
    };
    writeFile(sound, own);
    fs::remove(path(own + ".wav"));
    expectSaved(SaveFile(from, to, &picture, nullptr));
    expectSaved(SaveProcessFile(from, to, 3, &picture, nullptr));
    expectSaved(AddAudio(to, program, &picture, nullptr));
    expectSaved(AddAudioFile(to, program, sound.data(), &picture, nullptr, nullptr));
    char name[15] = {};
    EXPECT_EQ(GetSoundFile(to, name), 1);
    EXPECT_EQ(name, own + ".wav");
    EXPECT_EQ(readFile(path(name)), own);
  }
};

// All write into one folder, so that a name used twice would give a wrong picture.
TEST_F(ThreadsTest, ConcurrentCallsGiveTheSameResultsAsSingleOnes) {
  const std::string sources[] = {path("source.jpg"), path("source.tif")};
  const Items items[] = {itemsOf(sources[0]), itemsOf(sources[1])};
  std::atomic<int> waiting = threads;
  std::vector<std::thread> all;
  for (int number = 0; number < threads; ++number)
    all.emplace_back([&, number] {
      for (--waiting; waiting > 0;) std::this_thread::yield();
      for (int round = 0; round < rounds; ++round) {
        const int kind = (number + round) % 2;
        readSource(sources[kind], items[kind]);
        write(sources[kind], "own" + std::to_string(number), static_cast<unsigned>(24 + number));
      }
    });
  for (std::thread& thread : all) thread.join();
  // Only the sources, two folders, and two pictures and a recording of each thread.
  EXPECT_EQ(names().size(), 4u + 3 * threads);
}

// A thread cancelled before the call ends after it.
TEST_F(ThreadsTest, ACancelledThreadEndsAfterTheCall) {
  std::pair<std::string, int> work{path("source.jpg"), 0};  // and its answer
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    auto& [source, answer] = *static_cast<decltype(work)*>(argument);
    pthread_cancel(pthread_self());
    answer = IsExifFile(source.c_str());
    pthread_testcancel();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, nullptr, run, &work), 0);
  void* result = nullptr;
  pthread_join(thread, &result);
  EXPECT_EQ(result, PTHREAD_CANCELED);
  EXPECT_EQ(work.second, 1);
}

}  // namespace
}  // namespace exifkeep::test
