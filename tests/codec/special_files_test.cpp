// What is no regular file does not open as a picture, and nothing waits for it.
#include <sys/stat.h>

#include "codec/picture_fixture.h"

namespace {

class SpecialFiles : public CodecTest {};

TEST_F(SpecialFiles, OnlyRegularFilesOpen) {
  PRaster image = patterned(24, 2, 2);
  ASSERT_EQ(mkfifo(path("fifo.jpg").c_str(), 0600), 0);
  EXPECT_EQ(save(path("fifo.jpg"), image), 0);
  for (const char* name : {"fifo.jpg", "", "absent.jpg"}) {
    EXPECT_FALSE(load(path(name))) << name;
    EXPECT_EQ(AllReadPalette(path(name).c_str()), nullptr) << name;
  }
}

}  // namespace
