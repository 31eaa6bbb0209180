// Real pictures of many makers, where a folder with them is at hand: the one that EXIFKEEP_SAMPLES
// names, else ../shared/samples beside the checkout. Sizes as djpeg and tiffinfo tell them, those
// of the thumbnails after extraction with exiftool.
#include <exifkeep/exifkeep.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "codec/picture_fixture.h"

namespace exifkeep::test {
namespace {

struct Sample {
  const char* name;
  unsigned width, height, thumbnailWidth, thumbnailHeight;  // 0: no thumbnail
};

constexpr Sample samples[] = {
    {"36-memory_error.jpg", 1600, 1200, 160, 120},
    {"45-gps_ifd.jpg", 1600, 900, 160, 120},
    {"Canon_40D.jpg", 100, 68, 68, 46},
    {"Canon_40D_photoshop_import.jpg", 100, 77, 0, 0},  // no Exif file by its segments
    {"Canon_PowerShot_S40.jpg", 480, 360, 160, 120},
    {"DSCN0010.jpg", 640, 480, 160, 120},
    {"Fujifilm_FinePix_E500.jpg", 59, 100, 0, 0},
    {"Jobagent.tiff", 264, 84, 0, 0},
    {"Kodak_CX7530.jpg", 100, 78, 78, 60},
    {"Konica_Minolta_DiMAGE_Z3.jpg", 70, 100, 49, 70},
    {"Olympus_C8080WZ.jpg", 100, 72, 72, 51},  // its IFD1 lacks Compression
    {"Pentax_K10D.jpg", 100, 72, 72, 51},
    {"Picoawards.tiff", 436, 547, 0, 0},
    {"Ricoh_Caplio_RR330.jpg", 100, 75, 0, 0},  // its JPEG thumbnail claims to be uncompressed
    {"Samsung_Digimax_i50_MP3.jpg", 100, 75, 75, 56},
    {"canon_hdr_NO.jpg", 2048, 1536, 160, 120},
    {"fujifilm-finepix40i.jpg", 600, 450, 160, 120},
    {"kodak-dc240.jpg", 640, 480, 160, 120},
    {"landscape_6.jpg", 450, 600, 0, 0},
    {"nikon-e950.jpg", 800, 600, 160, 120},
    {"no_exif.jpg", 322, 466, 0, 0},
    {"sony-cybershot.jpg", 640, 480, 160, 120},
};

TEST(OpenSamples, SizesAgreeWithOtherDecoders) {
  const char* named = std::getenv("EXIFKEEP_SAMPLES");
  const std::string folder = named ? named : EXIFKEEP_SOURCE_DIR "/../shared/samples";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no sample pictures";
  for (const Sample& sample : samples) {
    SCOPED_TRACE(sample.name);
    const std::string path = folder + "/" + sample.name;
    PRaster image, thumbnail;
    // Those that are no Exif files are opened as plain pictures.
    if (!OpenExifFile(path.c_str(), &image, &thumbnail)) image = load(path).value_or(PRaster());
    EXPECT_EQ(image.width(), sample.width);
    EXPECT_EQ(image.height(), sample.height);
    EXPECT_EQ(thumbnail.width(), sample.thumbnailWidth);
    EXPECT_EQ(thumbnail.height(), sample.thumbnailHeight);
  }
}

}  // namespace
}  // namespace exifkeep::test
