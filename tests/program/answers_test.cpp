// What every command has in common: exit statuses, where answers and messages go, names from
// standard input, usage errors, and standard streams that are closed or full.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <vector>

#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Answers : public ShellTest {
 protected:
  Answers() {
    write("exif.jpg", exifJpeg("Maker"));
    write("sound.jpg", exifJpeg("Maker", "NOTE.WAV"));
    write("plain.jpg", "\xFF\xD8\xFF\xD9");
    std::filesystem::create_directory(path("folder.jpg"));
    ::mkfifo(path("fifo.jpg").c_str(), 0600);
  }
};

TEST_F(Answers, StatusIsTheGravestOfAllFiles) {
  const std::vector<std::tuple<const char*, int, const char*>> cases = {
      {"check plain.jpg exif.jpg", 1, "plain.jpg: not an Exif file\nexif.jpg: Exif file\n"},
      {"check gone.jpg plain.jpg exif.jpg", 3,
       "plain.jpg: not an Exif file\nexif.jpg: Exif file\n"},
      {"check /dev/zero", 3, ""},
      {"version exif.jpg", 0, "exif.jpg: 2.2\n"},
      {"sound sound.jpg", 0, "sound.jpg: NOTE.WAV\n"},
      {"sound exif.jpg", 1, "exif.jpg: no recording\n"},
      {"open folder.jpg", 3, ""},
      {"audio fifo.jpg", 3, ""},
  };
  for (const auto& [arguments, status, out] : cases) {
    const Outcome outcome = run(std::string("$E ") + arguments);
    EXPECT_EQ(outcome.status, status) << arguments << outcome.err;
    EXPECT_EQ(outcome.out, out) << arguments;
    EXPECT_EQ(outcome.err.empty(), status < 3 && !outcome.out.empty()) << arguments << outcome.err;
  }
}

TEST_F(Answers, WrongUsageDoesNothing) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"check", "FILE is required"},
      {"info --lang tlh exif.jpg", "de, en, es, fi, fr, it, ja, ko, nl, sv"},
      {"check --color red exif.jpg", "always or never"},
      {"save exif.jpg new.jpg --process 7", "2 to 6"},
      {"save exif.jpg -", "not to standard output"},
      {"save exif.jpg sound.jpg new.jpg", "need a folder"},
      {"open exif.jpg --image -", "not to standard output"},
      {"audio exif.jpg --sound note.mp3", ".wav, .WAV or .Wav"},
      {"audio exif.jpg --software \"$(printf %256s x)\"", "255"},
  };
  for (const auto& [arguments, complaint] : cases) {
    const Outcome outcome = run(std::string("$E ") + arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_THAT(outcome.err, HasSubstr(complaint)) << arguments;
  }
}

TEST_F(Answers, HelpIsAnAnswer) {
  for (const char* arguments : {"", "--help", "audio -h"}) {
    const Outcome outcome = run(std::string("$E ") + arguments);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_THAT(outcome.out, HasSubstr("Example")) << arguments;
    EXPECT_EQ(outcome.err, "") << arguments;
  }
  EXPECT_THAT(run("$E --version").out, testing::StartsWith("exifkeep "));
}

TEST_F(Answers, NamesComeFromStandardInput) {
  write("two\nlines.jpg", exifJpeg("Maker"));
  write("-0.jpg", exifJpeg("Maker"));
  write("[a]", "");
  const std::string both = "exif.jpg: Exif file\nsound.jpg: Exif file\n";
  const std::vector<std::pair<const char*, std::string>> cases = {
      {"printf 'exif.jpg\\n\\nsound.jpg' | $E check -", both},
      {"printf 'exif.jpg\\0' | $E check --null - sound.jpg", both},
      {"printf 'two\\nlines.jpg\\0exif.jpg\\0' | $E check -0",
       "two\\nlines.jpg: Exif file\nexif.jpg: Exif file\n"},
      {"$E check exif.jpg -- -0.jpg", "exif.jpg: Exif file\n-0.jpg: Exif file\n"},
      {"$E check '[a]' check", "[a]: not an Exif file\n"},
  };
  for (const auto& [command, out] : cases) EXPECT_EQ(run(command).out, out) << command;
  EXPECT_EQ(run("$E check - < .").status, 3);
  EXPECT_THAT(run("$E info - <exif.jpg").err, HasSubstr("standard input: holds a picture"));
  EXPECT_EQ(run("$E --color never check exif.jpg").out, "exif.jpg: Exif file\n");
}

// What a terminal gets; `command` has no double quotes.
class OnTerminal : public Answers {
 protected:
  std::string typed(const std::string& command) const {
    return run("TERM=xterm script -qec \"" + command + "\" typescript").out;
  }
  void SetUp() override {
    if (run("command -v script").status != 0) GTEST_SKIP() << "no terminal to be had";
  }
};

TEST_F(OnTerminal, ColourNeedsATerminalAndConsent) {
  const std::vector<std::pair<const char*, bool>> cases = {
      {"$E check exif.jpg", true},
      {"NO_COLOR=1 $E check exif.jpg", false},
      {"TERM=dumb $E check gone.jpg", false},
      {"$E check --color never exif.jpg", false},
      {"NO_COLOR=1 $E check exif.jpg --color always | cat", true},
      {"NO_COLOR= $E info --color auto exif.jpg", true},
  };
  for (const auto& [command, colored] : cases)
    EXPECT_EQ(typed(command).find("\x1B[") != std::string::npos, colored) << command;
}

// The line appears once half a second has passed, yields to a message and is gone at the end.
TEST_F(OnTerminal, LongBatchesShowHowFarTheyAre) {
  const std::string slowly = "{ echo exif.jpg; sleep 0.6; echo exif.jpg; sleep 0.2; echo gone; }";
  const std::string shown = typed(slowly + " | $E check --color never - >answers");
  EXPECT_THAT(shown, HasSubstr("\r\x1B[K2 files\r\x1B[Kexifkeep: gone: No such"));
  EXPECT_THAT(shown, Not(testing::EndsWith("files")));
  EXPECT_EQ(read("answers"), "exif.jpg: Exif file\nexif.jpg: Exif file\n");
  EXPECT_THAT(typed(slowly + " | $E check - | cat"), Not(HasSubstr("files")));
}

TEST_F(Answers, OutputThatCannotBeWrittenIsNoticed) {
  for (const char* command : {"$E check exif.jpg >/dev/full", "$E info --json exif.jpg >/dev/full",
                              "$E info exif.jpg >&-", "$E --help >&-"}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 3) << command;
    EXPECT_THAT(outcome.err, HasSubstr("standard output")) << command;
  }
  // A reader who has gone wants no message. Here it tells when it has.
  EXPECT_EQ(run("mkfifo gone; { read _ <gone; $E info exif.jpg; echo $? >&2; } |"
                "{ exec <&-; echo >gone; }")
                .err,
            "3\n");
}

}  // namespace
}  // namespace exifkeep::test
