// Saving and opening, each beside the least that has to be done: one plain encoding with the same
// settings, one write of the raw pixels, one plain decoding.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <jpeglib.h>
#include <unistd.h>

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

// The settings of the picture codec: quality 90, 4:2:2, standard tables.
void encodePlainly(const PRaster& picture, const std::string& path) {
  jpeg_compress_struct encoder = {};
  jpeg_error_mgr errors;
  encoder.err = jpeg_std_error(&errors);
  jpeg_create_compress(&encoder);
  FILE* file = fopen(path.c_str(), "wb");
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
  fclose(file);
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

void encode(benchmark::State& state, Size size) {
  const PRaster& picture = bench::photograph(size.width, size.height);
  for (auto _ : state) encodePlainly(picture, bench::workFile("plain.jpg"));
}
BENCHMARK_CAPTURE(encode, 24MP, twentyFourMegapixels)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encode, 2MP, twoMegapixels)->Unit(benchmark::kMillisecond);

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

void writeRawPixels(benchmark::State& state) {
  const std::vector<char> pixels(size_t{twelveMegapixels.width} * twelveMegapixels.height * 3, 7);
  for (auto _ : state) {
    const int file = open(bench::workFile("raw").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    for (size_t done = 0; done < pixels.size();) {
      const ssize_t step = write(file, pixels.data() + done, pixels.size() - done);
      if (step <= 0) return state.SkipWithError("the write failed");
      done += static_cast<size_t>(step);
    }
    close(file);
  }
}
BENCHMARK(writeRawPixels)->Name("write/12MP")->Unit(benchmark::kMillisecond);

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
