// SPDX-License-Identifier: MIT
// Reading: the exported functions on a folder of camera pictures, compared with the minimum work of
// the system (opening a file, one read of 4 KiB, closing it) and with a bare walk of the
// directories.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include "bare_walk.h"
#include "pictures.h"

namespace {

// One iteration is one pass over all pictures.
template <class Work>
void overPictures(benchmark::State& state, Work work) {
  if (bench::cameraPictures().empty()) state.SkipWithError("no camera pictures");
  for (auto _ : state)
    for (const std::string& path : bench::cameraPictures()) work(path.c_str());
  state.SetItemsProcessed(state.iterations() *
                          static_cast<int64_t>(bench::cameraPictures().size()));
}

void floorOfReading(benchmark::State& state) {
  static char buffer[4096];
  overPictures(state, [](const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    benchmark::DoNotOptimize(read(file, buffer, sizeof buffer));
    close(file);
  });
}
BENCHMARK(floorOfReading);

void isExifFile(benchmark::State& state) {
  overPictures(state, [](const char* path) { benchmark::DoNotOptimize(IsExifFile(path)); });
}
BENCHMARK(isExifFile);

void getExifVersion(benchmark::State& state) {
  overPictures(state, [](const char* path) { benchmark::DoNotOptimize(GetExifVersion(path)); });
}
BENCHMARK(getExifVersion);

void bareWalk(benchmark::State& state) {
  overPictures(state, [&state](const char* path) {
    if (!bench::bareWalk(path)) state.SkipWithError("a picture was not walked");
  });
}
BENCHMARK(bareWalk);

void getExifInfo(benchmark::State& state) {
  overPictures(state, [](const char* path) {
    CPtrList list;
    benchmark::DoNotOptimize(GetExifInfo(path, &list));
    FreeInfoList(&list);
  });
}
BENCHMARK(getExifInfo);

}  // namespace
