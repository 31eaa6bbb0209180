// What the library exports: the ten functions under their plain names and nothing else.
#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "program/shell.h"

namespace exifkeep::test {
namespace {

TEST(Exports, AreTheTenFunctions) {
  const Outcome outcome = Shell().run(EXIFKEEP_NM " -D --defined-only '" EXIFKEEP_LIBRARY "'");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  std::vector<std::string> names;
  std::istringstream lines(outcome.out);
  for (std::string address, kind, name; lines >> address >> kind >> name;) names.push_back(name);
  EXPECT_THAT(names, testing::UnorderedElementsAre("IsExifFile", "OpenExifFile", "GetExifInfo",
                                                   "FreeInfoList", "GetExifVersion", "GetSoundFile",
                                                   "SaveFile", "SaveProcessFile", "AddAudio",
                                                   "AddAudioFile"));
}

}  // namespace
}  // namespace exifkeep::test
