// Eight threads at once, each calling all ten functions: on sources that they share and on
// destinations of their own. What each gets is what it would have got alone.
#include <pthread.h>

#include <atomic>
#include <thread>
#include <vector>

#include "failures/saved_pictures.h"
#include "info/listing.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

constexpr int threads = 8, rounds = 6;
constexpr unsigned sourceWidth = 20;

class ThreadsTest : public SavedPictures {
 protected:
  ThreadsTest() {
    for (const char* name : {"source.jpg", "source.tif"}) saveWithMetadata(name, sourceWidth);
    fs::create_directory(path("rec"));
  }

  static void readSource(const std::string& source, const Items& expectedItems) {
    char sound[15] = {};
    PRaster image, thumbnail;
    EXPECT_EQ(IsExifFile(source.c_str()), 1);
    EXPECT_EQ(GetExifVersion(source.c_str()), 2.1f);
    EXPECT_EQ(itemsOf(source), expectedItems);
    EXPECT_EQ(GetSoundFile(source.c_str(), sound), 1);
    EXPECT_STREQ(sound, "source.wav");
    EXPECT_EQ(OpenExifFile(source.c_str(), &image, &thumbnail), 1);
    EXPECT_EQ(image.width(), sourceWidth);
    EXPECT_EQ(thumbnail.width(), 160u);
  }

  // `own` is a name that no other thread has, `width` a width.
  void write(const std::string& source, const std::string& own, unsigned width) const {
    PRaster picture = makePicture(width);
    std::string destination = path(own) + fs::path(source).extension().string();
    std::string sound = path("rec/" + own + ".wav");
    writeFile(sound, own);
    fs::remove(path(own + ".wav"));
    EXPECT_EQ(SaveFile(source.c_str(), destination.c_str(), &picture, nullptr), 1);
    EXPECT_EQ(widthOf(destination), width);
    EXPECT_EQ(SaveProcessFile(source.c_str(), destination.c_str(), 3, &picture, nullptr), 1);
    EXPECT_EQ(widthOf(destination), width);
    EXPECT_EQ(AddAudio(destination.data(), "a thread", &picture, nullptr), 1);
    EXPECT_EQ(widthOf(destination), width);
    EXPECT_EQ(
        AddAudioFile(destination.data(), "a thread", sound.data(), &picture, nullptr, nullptr), 1);
    EXPECT_EQ(widthOf(destination), width);
    char name[15] = {};
    EXPECT_EQ(GetSoundFile(destination.c_str(), name), 1);
    EXPECT_EQ(name, own + ".wav");
    EXPECT_EQ(readFile(path(name)), own);
  }
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

// All write into one folder, so that a shared name would show in a wrong picture.
TEST_F(ThreadsTest, AllFunctionsAtOnceAnswerAsAlone) {
  const std::string sources[] = {path("source.jpg"), path("source.tif")};
  const Items items[] = {itemsOf(sources[0]), itemsOf(sources[1])};
  onEveryThread([&](int number) {
    for (int round = 0; round < rounds; ++round) {
      const int kind = (number + round) % 2;
      readSource(sources[kind], items[kind]);
      write(sources[kind], "own" + std::to_string(number), static_cast<unsigned>(24 + number));
    }
  });
  // The sources and the recordings; of every thread two pictures and a recording; nothing else.
  EXPECT_EQ(names().size(), 3u + 3 * threads);
}

// Cancelled before the call, a thread ends after it.
TEST_F(ThreadsTest, ACancelledThreadEndsAfterTheCall) {
  struct Work {
    std::string source;
    int answer = 0;
    bool wentOn = false;
  } work{path("source.jpg")};
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    Work& own = *static_cast<Work*>(argument);
    pthread_cancel(pthread_self());
    own.answer = IsExifFile(own.source.c_str());
    pthread_testcancel();
    own.wentOn = true;
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, nullptr, run, &work), 0);
  void* result = nullptr;
  pthread_join(thread, &result);
  EXPECT_EQ(result, PTHREAD_CANCELED);
  EXPECT_EQ(work.answer, 1);
  EXPECT_FALSE(work.wentOn);
}

}  // namespace
}  // namespace exifkeep::test
