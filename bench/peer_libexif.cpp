// SPDX-License-Identifier: MIT
// libexif on the same pictures: loads and formats every entry's value.
#include <benchmark/benchmark.h>
#include <libexif/exif-data.h>

#include "pictures.h"

namespace {

void formatEntry(ExifEntry* entry, void*) {
  char value[256];
  benchmark::DoNotOptimize(exif_tag_get_title_in_ifd(entry->tag, exif_entry_get_ifd(entry)));
  benchmark::DoNotOptimize(exif_entry_get_value(entry, value, sizeof value));
}

void formatDirectory(ExifContent* directory, void*) {
  exif_content_foreach_entry(directory, formatEntry, nullptr);
}

void libexif(benchmark::State& state) {
  for (auto _ : state) {
    for (const std::string& path : bench::cameraPictures()) {
      ExifData* data = exif_data_new_from_file(path.c_str());
      if (!data) continue;
      exif_data_foreach_content(data, formatDirectory, nullptr);
      exif_data_unref(data);
    }
  }
}
BENCHMARK(libexif);

}  // namespace
