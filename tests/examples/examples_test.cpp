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

TEST_F(Examples, ListFolderShowsEveryExifPicture) {
  write("notes.txt", "no picture");
  const Outcome listed = example("list_folder .");
  EXPECT_EQ(listed.status, 0) << listed.err;
  EXPECT_THAT(listed.out, AllOf(HasSubstr("photo.jpg (Exif 2.2)\n"), HasSubstr(": Maker\n"),
                                HasSubstr("\n1 Exif pictures\n")));
  EXPECT_EQ(example("list_folder gone").status, 1);
  // The README's example lists the same lines for one picture.
  const Outcome readme = run("'" EXIFKEEP_README_EXAMPLE "' photo.jpg");
  EXPECT_EQ(readme.status, 0);
  EXPECT_THAT(readme.out, HasSubstr(": Maker\n"));
}

TEST_F(Examples, RotateAndSaveTurnsPixelsAndMetadata) {
  const Outcome turned = example("rotate_and_save photo.jpg turned.jpg");
  ASSERT_EQ(turned.status, 0) << turned.err;
  PRaster image, thumbnail;
  ASSERT_TRUE(OpenExifFile(path("turned.jpg").c_str(), &image, &thumbnail));
  ASSERT_EQ(image.GetImageWidth(), 32u);
  ASSERT_EQ(image.GetImageHeight(), 64u);
  EXPECT_GT(image.GetPixel(16, 10) & 0xFF, 0xC0u) << "the left becomes the top";
  EXPECT_LT(image.GetPixel(16, 50) & 0xFF, 0x40u);
  EXPECT_EQ(thumbnail.GetImageWidth(), 160u);
  const std::string info = run("$E info turned.jpg").out;
  EXPECT_THAT(info, AllOf(HasSubstr("Maker"), HasSubstr("Row 0 is at the visible top")));
  // 8000 dots a metre across, 4000 down, in dots per inch.
  EXPECT_LT(info.find(" 203\n"), info.find(" 102\n")) << info;
  // Over itself it turns on; to a format without metadata it says what is lost.
  EXPECT_EQ(example("rotate_and_save turned.jpg turned.jpg").status, 0);
  EXPECT_THAT(run("$E open turned.jpg").out, HasSubstr("64 x 32 pixels"));
  EXPECT_THAT(example("rotate_and_save photo.jpg turned.png").err, HasSubstr("without"));
  EXPECT_EQ(example("rotate_and_save plain.jpg new.jpg").status, 1);
}

TEST_F(Examples, AttachRecordingCopiesAsksAndNames) {
  std::filesystem::create_directory(path("sounds"));
  write("sounds/Recording at the beach.wav", "waves");
  const Outcome attached =
      example("attach_recording photo.jpg 'sounds/Recording at the beach.wav'");
  EXPECT_EQ(attached.status, 0) << attached.err;
  EXPECT_EQ(attached.out, "photo.jpg: Record01.wav\n");
  EXPECT_EQ(read("Record01.wav"), "waves");
  EXPECT_THAT(example("list_folder .").out,
              AllOf(HasSubstr("Recording: Record01.wav\n"), HasSubstr("attach_recording")));

  write("sounds/note.wav", "new");
  write("note.wav", "old");
  EXPECT_EQ(example("attach_recording photo.jpg sounds/note.wav").status, 1);
  EXPECT_EQ(read("note.wav"), "old");
  EXPECT_EQ(
      run("echo yes | '" EXIFKEEP_EXAMPLES "'/attach_recording photo.jpg sounds/note.wav").status,
      0);
  EXPECT_EQ(read("note.wav"), "new");
  EXPECT_EQ(run("$E sound photo.jpg").out, "photo.jpg: note.wav\n");
}

}  // namespace
}  // namespace exifkeep::test
