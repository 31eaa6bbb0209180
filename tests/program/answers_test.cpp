// What every command has in common: exit statuses, where answers and messages go, names from
// standard input, usage errors, and standard streams that are closed or full.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Answers : public testing::Test {
 protected:
  Answers() {
    shell_.write("exif.jpg", exifJpeg("Maker"));
    shell_.write("sound.jpg", exifJpeg("Maker", "NOTE.WAV"));
    shell_.write("plain.jpg", "\xFF\xD8\xFF\xD9");
    std::filesystem::create_directory(shell_.path("folder.jpg"));
    ::mkfifo(shell_.path("fifo.jpg").c_str(), 0600);
  }

  Shell shell_;
};

TEST_F(Answers, StatusIsTheGravestOfAllFiles) {
  struct Case {
    const char* command;
    int status;
    const char* out;
  };
  const std::vector<Case> cases = {
      {"$E check exif.jpg", 0, "exif.jpg: Exif file\n"},
      {"$E check plain.jpg exif.jpg", 1, "plain.jpg: not an Exif file\nexif.jpg: Exif file\n"},
      {"$E check gone.jpg plain.jpg exif.jpg", 3,
       "plain.jpg: not an Exif file\nexif.jpg: Exif file\n"},
      {"$E check folder.jpg", 3, ""},
      {"$E check fifo.jpg", 3, ""},
      {"$E check /dev/zero", 3, ""},
      {"$E version exif.jpg", 0, "exif.jpg: 2.2\n"},
      {"$E version plain.jpg", 1, "plain.jpg: not an Exif file\n"},
      {"$E sound sound.jpg", 0, "sound.jpg: NOTE.WAV\n"},
      {"$E sound exif.jpg", 1, "exif.jpg: no recording\n"},
      {"$E info plain.jpg", 1, ""},
      {"$E open folder.jpg", 3, ""},
      {"$E open plain.jpg", 1, "plain.jpg: not an Exif file\n"},
      {"$E save gone.jpg new.jpg", 3, ""},
      {"$E audio fifo.jpg", 3, ""},
  };
  for (const Case& c : cases) {
    const Outcome outcome = shell_.run(c.command);
    EXPECT_EQ(outcome.status, c.status) << c.command << outcome.err;
    EXPECT_EQ(outcome.out, c.out) << c.command;
    const bool allAnswered = c.status < 3 && outcome.out != "";
    EXPECT_EQ(outcome.err.empty(), allAnswered) << c.command << outcome.err;
  }
}

TEST_F(Answers, UnreadableFileCannotBeOpened) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
  const Outcome outcome = shell_.run("chmod 0 exif.jpg; $E check exif.jpg");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("exif.jpg: Permission denied"));
}

TEST_F(Answers, WrongUsageDoesNothing) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"$E check", "FILE is required"},
      {"$E info --lang tlh exif.jpg", "de, en, es, fi, fr, it, ja, ko, nl, sv"},
      {"$E info --colour exif.jpg", "--colour"},
      {"$E convert exif.jpg", "convert"},
      {"$E save exif.jpg", "DESTINATION"},
      {"$E save exif.jpg new.jpg --process two", "two"},
      {"$E audio exif.jpg --software \"$(printf %256s x)\"", "255"},
      {"$E open exif.jpg plain.jpg", "plain.jpg"},
  };
  for (const auto& [command, complaint] : cases) {
    const Outcome outcome = shell_.run(command);
    EXPECT_EQ(outcome.status, 2) << command;
    EXPECT_EQ(outcome.out, "") << command;
    EXPECT_THAT(outcome.err, HasSubstr(complaint)) << command;
  }
  EXPECT_FALSE(std::filesystem::exists(shell_.path("new.jpg")));
}

TEST_F(Answers, HelpAndVersionAreAnswers) {
  for (const char* arguments :
       {"", "--help", "info --help", "check -h", "version --help", "sound --help",
        "languages --help", "open --help", "save --help", "audio --help"}) {
    const Outcome outcome = shell_.run(std::string("$E ") + arguments);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_THAT(outcome.out, HasSubstr("Example")) << arguments;
    EXPECT_EQ(outcome.err, "") << arguments;
  }
  EXPECT_THAT(shell_.run("$E --version").out, StartsWith("exifkeep "));
}

TEST_F(Answers, NamesComeFromStandardInput) {
  shell_.write("two\nlines.jpg", exifJpeg("Maker"));
  shell_.write("-0.jpg", exifJpeg("Maker"));
  shell_.write("[a]", "");
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"printf 'exif.jpg\\n\\nsound.jpg' | $E check -",
       "exif.jpg: Exif file\nsound.jpg: Exif file\n"},
      {"printf 'two\\nlines.jpg\\0exif.jpg\\0' | $E check -0",
       "two\\nlines.jpg: Exif file\nexif.jpg: Exif file\n"},
      {"printf 'exif.jpg\\0' | $E check --null - sound.jpg",
       "exif.jpg: Exif file\nsound.jpg: Exif file\n"},
      {"$E check -0 </dev/null", ""},
      {"$E check sound.jpg -- -0.jpg", "sound.jpg: Exif file\n-0.jpg: Exif file\n"},
      {"$E check -- -0.jpg", "-0.jpg: Exif file\n"},
      {"$E check '[a]' check", "./[a]: not an Exif file\n"},
  };
  for (const auto& [command, out] : cases) EXPECT_EQ(shell_.run(command).out, out) << command;
  EXPECT_EQ(shell_.run("$E check - < .").status, 3);
}

TEST_F(Answers, OutputThatCannotBeWrittenIsNoticed) {
  for (const char* command :
       {"$E check exif.jpg >/dev/full", "$E info --json exif.jpg >/dev/full",
        "$E info exif.jpg >&-", "$E languages >/dev/full", "$E --help >&-",
        "{ $E info exif.jpg; echo $? >status; } | true; exit $(cat status)"}) {
    const Outcome outcome = shell_.run(command);
    EXPECT_EQ(outcome.status, 3) << command;
    EXPECT_THAT(outcome.err, HasSubstr("standard output")) << command;
  }
}

}  // namespace
}  // namespace exifkeep::test
