// SPDX-License-Identifier: MIT
// Listing very many pictures: the processor time of exifkeep info --json on one thread, from its
// start to its end and with its output discarded, compared with that of the GetExifInfo calls that
// it makes.
#include <benchmark/benchmark.h>
#include <exifkeep/field_list.h>
#include <sys/resource.h>

#include <cstdlib>
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

void listingProgram(benchmark::State& state) {
  const std::string names = bench::workFile("names");
  {
    std::ofstream file(names);
    for (size_t i = 0; i < pictureCount && !bench::cameraPictures().empty(); ++i)
      file << pictureAt(i) << '\n';
  }
  const std::string command = EXIFKEEP_PROGRAM " info --json -j 1 - <" + names + " >/dev/null";
  overManyPictures(state, RUSAGE_CHILDREN, [&] { return std::system(command.c_str()) == 0; });
}
BENCHMARK(listingProgram)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
