// SPDX-License-Identifier: MIT
// Measures how cost grows: of listing with the number of directory entries, of saving and opening
// with the number of pixels. The "BigO" lines of the report are the fits; a plain N means linear.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <fstream>

#include "pictures.h"
#include "tiff_builder.h"

namespace {

// A TIFF file whose Exif directory has this many entries: the version, and ExposureTimes with
// values at different places.
std::string pictureWithEntries(int64_t entries) {
  using namespace exifkeep::test;
  Picture picture{.image = {exifPointer()}, .exif = {bytes(0x9000, "0220")}};
  for (int64_t i = 1; i < entries; ++i) picture.exif.push_back(rationals(0x829A, {1, i}));
  const std::string path = bench::workFile("entries.tif");
  std::ofstream(path, std::ios::binary) << tiffBytes(picture, Order::ii);
  return path;
}

void growthWithEntries(benchmark::State& state) {
  const std::string path = pictureWithEntries(state.range(0));
  for (auto _ : state) {
    CPtrList list;
    if (!GetExifInfo(path.c_str(), &list) || list.GetCount() != 2)
      state.SkipWithError("the picture was not listed");
    FreeInfoList(&list);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(growthWithEntries)->RangeMultiplier(4)->Range(32, 32000)->Complexity(benchmark::oN);

// Saved as JPEG and opened; N is in megapixels.
void growthWithPixels(benchmark::State& state) {
  const auto side = static_cast<unsigned>(1000 * state.range(0));
  const std::string source = bench::exifPicture(side, 1000, "jpg");
  const std::string destination = bench::workFile("grown.jpg");
  auto& picture = const_cast<PRaster&>(bench::photograph(side, 1000));
  for (auto _ : state) {
    PRaster image;
    if (!SaveFile(source.c_str(), destination.c_str(), &picture, nullptr) ||
        !OpenExifFile(destination.c_str(), &image, nullptr))
      state.SkipWithError("the picture was not saved or not opened");
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(growthWithPixels)
    ->RangeMultiplier(2)
    ->Range(1, 16)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace
