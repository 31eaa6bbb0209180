// Reading: the ten-function interface on a folder of camera pictures, beside what the system needs
// for opening a file, reading its first 64 KiB and closing it.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

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
  static char buffer[65536];
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

void getExifInfo(benchmark::State& state) {
  overPictures(state, [](const char* path) {
    CPtrList list;
    benchmark::DoNotOptimize(GetExifInfo(path, &list));
    FreeInfoList(&list);
  });
}
BENCHMARK(getExifInfo);

}  // namespace
