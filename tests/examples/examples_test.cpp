// The examples as newcomers run them. What they leave is read back with the library and its
// program.
#include <exifkeep/exifkeep.h>
#include <gmock/gmock.h>

#include "codec/picture_fixture.h"
#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

constexpr unsigned red = 0x0000F0, blue = 0xF00000;

class Examples : public ShellTest {
 protected:
  // A picture of 64 x 32 pixels, red on the left and blue on the right.
  Examples() {
    PRaster image;
    image.CreateImage(PRaster::type24Bit, 64, 32, 0, 0, 4000, 8000);
    for (int y = 0; y < 32; ++y)
      for (int x = 0; x < 64; ++x) image.SetPixel(x, y, x < 32 ? red : blue);
    EXPECT_EQ(save(path("plain.jpg"), image), 1);
    const Picture metadata = {
        .image = {text(0x010F, "Maker"), shorts(0x0112, {6}), exifPointer()},
        .exif = {bytes(0x9000, "0220"), longs(0xA002, {64}), longs(0xA003, {32})}};
    write("photo.jpg", withPixels(jpegBytes(tiffBytes(metadata, Order::ii)), read("plain.jpg")));
  }

  Outcome example(const std::string& command) const {
    return run("'" EXIFKEEP_EXAMPLES "'/" + command);
  }
};

TEST_F(Examples, ListRotateAndAttach) {
  const Outcome listed = example("list_folder .");
  EXPECT_EQ(listed.status, 0) << listed.err;
  EXPECT_THAT(listed.out, AllOf(HasSubstr("photo.jpg (Exif 2.2)\n"), HasSubstr(": Maker\n"),
                                HasSubstr("\n1 Exif pictures\n")));
  EXPECT_THAT(run("'" EXIFKEEP_README_EXAMPLE "' photo.jpg").out, HasSubstr(": Maker\n"));

  const Outcome turned = example("rotate_and_save photo.jpg turned.jpg");
  ASSERT_EQ(turned.status, 0) << turned.err;
  PRaster image;
  ASSERT_TRUE(OpenExifFile(path("turned.jpg").c_str(), &image, nullptr));
  ASSERT_EQ(image.GetImageHeight(), 64u);
  EXPECT_GT(image.GetPixel(16, 10) & 0xFF, 0xC0u) << "the left becomes the top";
  EXPECT_THAT(run("$E info turned.jpg").out, HasSubstr("Row 0 is at the visible top"));

  std::filesystem::create_directory(path("sounds"));
  write("sounds/Recording at the beach.wav", "waves");
  EXPECT_EQ(example("attach_recording photo.jpg 'sounds/Recording at the beach.wav'").out,
            "photo.jpg: Record01.wav\n");
  EXPECT_EQ(read("Record01.wav"), "waves");
}

}  // namespace
}  // namespace exifkeep::test
