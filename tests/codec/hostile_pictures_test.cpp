// Small files made to cost seconds or hundreds of MiB are refused before they do. Run by hand with
// EXIFKEEP_HOSTILE naming a folder, this leaves the files there to be measured.
#include <exifkeep/exifkeep.h>

#include <fstream>

#include "hostile_pictures.h"
#include "picture_fixture.h"

namespace exifkeep::test {
namespace {

using HostilePictures = ScratchTest;

long largestAddressSpace() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmPeak:") continue;
  long kibi = 0;
  status >> kibi;
  return kibi;
}

TEST_F(HostilePictures, AreRefusedBeforeTheyCost) {
  PRaster ordinary = patterned(24, 40, 30);
  ASSERT_EQ(save(path("a.jpg"), ordinary), 1);
  const char* keep = std::getenv("EXIFKEEP_HOSTILE");
  for (const HostilePicture& picture : hostilePictures(readFile(path("a.jpg")))) {
    const std::string file = keep ? std::string(keep) + "/" + picture.name : path(picture.name);
    writeFile(file, picture.file);
    if (picture.sparseSize) std::filesystem::resize_file(file, picture.sparseSize);
    const long before = largestAddressSpace();
    PRaster image, thumbnail = patterned(8, 2, 1);
    const bool isPng = file.ends_with(".png");
    EXPECT_EQ(OpenExifFile(file.c_str(), &image, &thumbnail), isPng ? 0 : 1) << picture.name;
    EXPECT_EQ(image.IsEmpty(), file.ends_with(".jpg") || picture.isDecoded ? 0 : 1) << picture.name;
    EXPECT_EQ(thumbnail.IsEmpty(), picture.hasThumbnail ? 1 : 0) << picture.name;
    EXPECT_EQ(load(file).has_value(), isPng || !image.IsEmpty()) << picture.name;
    EXPECT_LT(largestAddressSpace() - before, 32 * 1024) << picture.name;
  }
}

}  // namespace
}  // namespace exifkeep::test
