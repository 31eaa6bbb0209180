// SPDX-License-Identifier: MIT
// Listing very many pictures: the processor time of exifkeep info --json on one thread, from its
// start to its end and with its output discarded, compared with that of the GetExifInfo calls that
// it makes.
#include <benchmark/benchmark.h>
#include <exifkeep/field_list.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "pictures.h"

namespace {

constexpr size_t pictureCount = 10000;

// The camera pictures, repeated.
const char* pictureAt(size_t i) {
  return bench::cameraPictures()[i % bench::cameraPictures().size()].c_str();
}

double secondsUsed(int who) {
  rusage used;
  getrusage(who, &used);
  const auto seconds = [](timeval time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
  };
  return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// `who` does the work: this process or its children.
template <class Work>
void overManyPictures(benchmark::State& state, int who, Work work) {
  if (bench::cameraPictures().empty()) state.SkipWithError("no camera pictures");
  for (auto _ : state) {
    const double before = secondsUsed(who);
    if (!work()) state.SkipWithError("the pictures were not listed");
    state.SetIterationTime(secondsUsed(who) - before);
  }
}

void listingCalls(benchmark::State& state) {
  overManyPictures(state, RUSAGE_SELF, [] {
    bool listed = true;
    for (size_t i = 0; i < pictureCount; ++i) {
      exifkeep::FieldList list;
      listed &= GetExifInfo(pictureAt(i), &list) != 0;
    }
    return listed;
  });
}
BENCHMARK(listingCalls)->UseManualTime()->Unit(benchmark::kMillisecond);

// Without a shell, whose own time would be counted too.
bool runProgram(const std::string& input) {
  posix_spawn_file_actions_t redirections;
  posix_spawn_file_actions_init(&redirections);
  posix_spawn_file_actions_addopen(&redirections, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&redirections, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const char* const arguments[] = {"exifkeep", "info", "--json", "-j", "1", "-", nullptr};
  pid_t program;
  int status = -1;
  if (posix_spawn(&program, EXIFKEEP_PROGRAM, &redirections, nullptr, const_cast<char**>(arguments),
                  environ) == 0)
    waitpid(program, &status, 0);
  posix_spawn_file_actions_destroy(&redirections);
  return status == 0;
}

void listingProgram(benchmark::State& state) {
  const std::string names = bench::workFile("names");
  {
    std::ofstream file(names);
    for (size_t i = 0; i < pictureCount && !bench::cameraPictures().empty(); ++i)
      file << pictureAt(i) << '\n';
  }
  overManyPictures(state, RUSAGE_CHILDREN, [&] { return runProgram(names); });
}
BENCHMARK(listingProgram)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
