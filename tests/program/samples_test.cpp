// Real pictures of many makers, where a folder with them is at hand: the one that EXIFKEEP_SAMPLES
// names, else ../shared/samples beside the checkout.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "program/shell.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

fs::path samplesFolder() {
  const char* named = std::getenv("EXIFKEEP_SAMPLES");
  return named != nullptr ? fs::path(named) : fs::path(EXIFKEEP_SOURCE_DIR) / "../shared/samples";
}

TEST(Samples, SeventeenAnswerExifAndFiveDoNot) {
  const fs::path folder = samplesFolder();
  if (!fs::is_directory(folder)) GTEST_SKIP() << "no sample pictures";
  const Shell shell;
  const std::string pictures =
      "find '" + folder.string() + "' -name '*.jpg' -print0 -o -name '*.tiff' -print0";
  const Outcome outcome = shell.run(pictures + " | $E info --json -0");
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  std::set<std::string> refused;
  int listed = 0;
  for (const auto& picture : nlohmann::json::parse(outcome.out)) {
    if (picture["exif"].get<bool>()) {
      ++listed;
      EXPECT_GT(picture["items"].size(), 10u) << picture["file"];
    } else {
      refused.insert(fs::path(picture["file"].get<std::string>()).filename().string());
    }
  }
  EXPECT_EQ(listed, 17);
  EXPECT_EQ(refused, (std::set<std::string>{"Canon_40D_photoshop_import.jpg", "Jobagent.tiff",
                                            "Picoawards.tiff", "landscape_6.jpg", "no_exif.jpg"}));
}

}  // namespace
}  // namespace exifkeep::test
