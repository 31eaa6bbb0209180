// SPDX-License-Identifier: MIT
// Saving and opening, compared with the minimum work. For a save that survives a power failure this
// is to encode with the same settings (or take the raw pixels), write and sync a new file, rename
// it over the old one and sync the folder; for opening, it is a plain decoding.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <jpeglib.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "pictures.h"

namespace {

struct Size {
  unsigned width, height;
};
constexpr Size twentyFourMegapixels{6000, 4000};
constexpr Size twelveMegapixels{4000, 3000};
constexpr Size twoMegapixels{1632, 1224};

// Replaces an existing picture by a file that `write` fills, so that after a power failure there is
// either the old picture or the new one. False if a call failed.
template <class Write>
bool replaceDurably(const std::string& destination, Write write) {
  const std::string newPath = destination + ".new";
  FILE* file = fopen(newPath.c_str(), "wb");
  if (!file) return false;
  const bool isWritten = write(file) && fflush(file) == 0 && fsync(fileno(file)) == 0;
  if (fclose(file) != 0 || !isWritten || rename(newPath.c_str(), destination.c_str()) != 0)
    return false;
  const std::string folder = std::filesystem::path(destination).parent_path();
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  const bool isSynced = fsync(descriptor) == 0;
  close(descriptor);
  return isSynced;
}

// The settings of the picture codec: quality 90, 4:2:2, standard tables.
bool encodePlainly(const PRaster& picture, FILE* file) {
  jpeg_compress_struct encoder = {};
  jpeg_error_mgr errors;
  encoder.err = jpeg_std_error(&errors);
  jpeg_create_compress(&encoder);
  jpeg_stdio_dest(&encoder, file);
  encoder.image_width = picture.width();
  encoder.image_height = picture.height();
  encoder.input_components = 3;
  encoder.in_color_space = JCS_EXT_BGR;
  jpeg_set_defaults(&encoder);
  jpeg_set_quality(&encoder, 90, TRUE);
  encoder.comp_info[0].h_samp_factor = 2;
  encoder.comp_info[0].v_samp_factor = 1;
  jpeg_start_compress(&encoder, TRUE);
  while (encoder.next_scanline < encoder.image_height) {
    auto* row = const_cast<JSAMPROW>(picture.row(encoder.next_scanline).data());
    jpeg_write_scanlines(&encoder, &row, 1);
  }
  jpeg_finish_compress(&encoder);
  jpeg_destroy_compress(&encoder);
  return true;
}

void decodePlainly(const std::string& path) {
  jpeg_decompress_struct decoder = {};
  jpeg_error_mgr errors;
  decoder.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&decoder);
  FILE* file = fopen(path.c_str(), "rb");
  jpeg_stdio_src(&decoder, file);
  jpeg_read_header(&decoder, TRUE);
  decoder.out_color_space = JCS_EXT_BGR;
  jpeg_start_decompress(&decoder);
  const size_t rowSize = size_t{decoder.output_width} * 3;
  const std::unique_ptr<JSAMPLE[]> pixels(new JSAMPLE[rowSize * decoder.output_height]);
  while (decoder.output_scanline < decoder.output_height) {
    JSAMPROW row = pixels.get() + rowSize * decoder.output_scanline;
    jpeg_read_scanlines(&decoder, &row, 1);
  }
  jpeg_finish_decompress(&decoder);
  jpeg_destroy_decompress(&decoder);
  fclose(file);
}

void durableJpeg(benchmark::State& state, Size size) {
  const PRaster& picture = bench::photograph(size.width, size.height);
  const auto write = [&](FILE* file) { return encodePlainly(picture, file); };
  for (auto _ : state)
    if (!replaceDurably(bench::workFile("durable.jpg"), write))
      state.SkipWithError("the durable save failed");
}
BENCHMARK_CAPTURE(durableJpeg, 24MP, twentyFourMegapixels)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(durableJpeg, 2MP, twoMegapixels)->Unit(benchmark::kMillisecond);

void durablePixels(benchmark::State& state, Size size) {
  const std::vector<char> pixels(size_t{size.width} * size.height * 3, 7);
  const auto write = [&](FILE* file) {
    return fwrite(pixels.data(), 1, pixels.size(), file) == pixels.size();
  };
  for (auto _ : state)
    if (!replaceDurably(bench::workFile("durable.raw"), write))
      state.SkipWithError("the durable save failed");
}
BENCHMARK_CAPTURE(durablePixels, 12MP, twelveMegapixels)->Unit(benchmark::kMillisecond);

void save(benchmark::State& state, Size size, const char* extension) {
  const std::string source = bench::exifPicture(size.width, size.height, extension);
  const std::string destination = bench::workFile(std::string("saved.") + extension);
  auto& picture = const_cast<PRaster&>(bench::photograph(size.width, size.height));
  for (auto _ : state)
    if (!SaveFile(source.c_str(), destination.c_str(), &picture, nullptr))
      state.SkipWithError("the save failed");
}
BENCHMARK_CAPTURE(save, jpeg24MP, twentyFourMegapixels, "jpg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, jpeg2MP, twoMegapixels, "jpg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, tiff12MP, twelveMegapixels, "tif")->Unit(benchmark::kMillisecond);

void decode(benchmark::State& state) {
  const std::string path =
      bench::exifPicture(twentyFourMegapixels.width, twentyFourMegapixels.height, "jpg");
  for (auto _ : state) decodePlainly(path);
}
BENCHMARK(decode)->Name("decode/24MP")->Unit(benchmark::kMillisecond);

void openPicture(benchmark::State& state) {
  const std::string path =
      bench::exifPicture(twentyFourMegapixels.width, twentyFourMegapixels.height, "jpg");
  for (auto _ : state) {
    PRaster image;
    if (!OpenExifFile(path.c_str(), &image, nullptr) || image.IsEmpty())
      state.SkipWithError("the picture did not open");
  }
}
BENCHMARK(openPicture)->Name("open/24MP")->Unit(benchmark::kMillisecond);

}  // namespace
