// SPDX-License-Identifier: MIT
// exiv2 on the same pictures: reads and formats every Exif value.
#include <benchmark/benchmark.h>

#include <exiv2/exiv2.hpp>

#include "pictures.h"

namespace {

void exiv2(benchmark::State& state) {
  Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
  for (auto _ : state) {
    for (const std::string& path : bench::cameraPictures()) {
      try {
        const auto image = Exiv2::ImageFactory::open(path);
        image->readMetadata();
        for (const auto& entry : image->exifData()) {
          benchmark::DoNotOptimize(entry.tagLabel());
          benchmark::DoNotOptimize(entry.print());
        }
      } catch (const Exiv2::AnyError&) {
      }
    }
  }
}
BENCHMARK(exiv2);

}  // namespace
