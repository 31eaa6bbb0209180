// How cost grows: listing with the number of directory entries, saving and opening with the number
// of pixels. The report's "BigO" lines are the fits; a plain N means linear.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <fstream>

#include "pictures.h"

namespace {

void append(std::string& bytes, uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

void appendEntry(std::string& bytes, uint32_t tag, uint32_t type, uint32_t count, uint32_t value) {
  append(bytes, tag, 2);
  append(bytes, type, 2);
  append(bytes, count, 4);
  append(bytes, value, 4);
}

// A TIFF file whose Exif directory has this many entries: the version, and else ExposureTimes that
// each have to be fetched from their own place.
std::string pictureWithEntries(uint32_t entries) {
  constexpr uint32_t exifAt = 26;
  const uint32_t valuesAt = exifAt + 2 + 12 * entries + 4;
  std::string bytes("II\x2a\0\x08\0\0\0\x01\0", 10);
  appendEntry(bytes, 0x8769, 4, 1, exifAt);
  append(bytes, 0, 4);
  append(bytes, entries, 2);
  appendEntry(bytes, 0x9000, 7, 4, 0x30323230);
  for (uint32_t i = 1; i < entries; ++i) appendEntry(bytes, 0x829A, 5, 1, valuesAt + 8 * i);
  append(bytes, 0, 4);
  for (uint32_t i = 0; i < entries; ++i) append(bytes, 1, 4), append(bytes, i + 1, 4);
  const std::string path = bench::workFile("entries.tif");
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

void growthWithEntries(benchmark::State& state) {
  const std::string path = pictureWithEntries(static_cast<uint32_t>(state.range(0)));
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
