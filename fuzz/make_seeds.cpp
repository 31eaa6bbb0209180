// SPDX-License-Identifier: MIT
// Writes the seeds that do not come from faults into a folder: Exif structures built from a
// description, in JPEG and TIFF files and both byte orders, and pictures saved by the library.
#include <exifkeep/exifkeep.h>

#include <cstdio>
#include <filesystem>

#include "input.h"
#include "picture_kinds.h"
#include "tiff_builder.h"

using namespace exifkeep::test;
using exifkeep::fuzz::makePicture;
using exifkeep::fuzz::readFile;
using exifkeep::fuzz::scratchPath;
using exifkeep::fuzz::writeFile;

namespace {

std::string folder;

void write(const std::string& name, bool isTiff, unsigned choice, const std::string& file) {
  writeFile(folder + "/" + name, static_cast<char>(choice << 1 | isTiff) + file);
}

Picture everyKindOfField() {
  return {.image = {shorts(0x102, {8, 8, 8}), text(0x10E, "A picture"), text(0x10F, "Maker"),
                    text(0x110, "Model"), shorts(0x112, {6}), rationals(0x11A, {72, 1}),
                    rationals(0x11B, {72, 1}), shorts(0x128, {2}), text(0x131, "Software"),
                    text(0x132, "2002:05:14 10:11:12"), rationals(0x13E, {313, 1000, 329, 1000}),
                    shorts(0x213, {2}),
                    rationals(0x214, {0, 1, 255, 1, 128, 1, 255, 1, 128, 1, 255, 1}),
                    text(0x8298, "Somebody"), exifPointer(), gpsPointer()},
          .exif = {rationals(0x829A, {1, 60}),
                   rationals(0x829D, {28, 10}),
                   shorts(0x8822, {2}),
                   shorts(0x8827, {100}),
                   bytes(0x9000, "0220"),
                   text(0x9003, "2002:05:14 10:11:12"),
                   text(0x9004, "2002:05:14 10:11:12"),
                   bytes(0x9101, std::string("\1\2\3\0", 4)),
                   rationals(0x9102, {2, 1}),
                   rationals(0x9201, {-7, 2}),
                   rationals(0x9204, {-1, 3}),
                   shorts(0x9207, {5}),
                   shorts(0x9208, {0}),
                   shorts(0x9209, {1}),
                   rationals(0x920A, {50, 1}),
                   shorts(0x9214, {10, 20, 30, 40}),
                   bytes(0x927C, std::string(40, 'n')),
                   bytes(0x9286, std::string("ASCII\0\0\0A comment", 17)),
                   text(0x9290, "123"),
                   bytes(0xA000, "0100"),
                   shorts(0xA001, {1}),
                   longs(0xA002, {24}),
                   longs(0xA003, {16}),
                   text(0xA004, "SOUND001.WAV"),
                   interoperabilityPointer(),
                   bytes(0xA300, "\3", typeUndefined),
                   shorts(0xA401, {1}),
                   shorts(0xA402, {0}),
                   rationals(0xA404, {0, 1}),
                   shorts(0xA405, {50}),
                   shorts(0xA406, {0}),
                   text(0xA420, "0123456789abcdef0123456789abcdef")},
          .interoperability = {bytes(1, "R98", typeAscii), bytes(2, "0100")},
          .gps = {bytes(0, std::string("\2\2\0\0", 4), typeByte), text(1, "N"),
                  rationals(2, {48, 1, 12, 1, 30, 1}), text(3, "E"),
                  rationals(4, {11, 1, 30, 1, 0, 1}), bytes(5, std::string(1, '\0'), typeByte),
                  rationals(6, {500, 1}), rationals(7, {10, 1, 11, 1, 12, 1}), text(18, "WGS-84"),
                  bytes(27, std::string("ASCII\0\0\0GPS", 11)), text(29, "2002:05:14"),
                  shorts(30, {0})}};
}

// An uncompressed thumbnail of 4 by 2 pixels: its strip follows the structure.
Picture withPixels(unsigned bits, unsigned samples, unsigned photometric) {
  Picture picture{.image = {exifPointer()}, .exif = {bytes(0x9000, "0210")}};
  const auto thumbnail = [&](int64_t strip) {
    return std::vector<Entry>{longs(0x100, {4}),
                              longs(0x101, {2}),
                              shorts(0x102, {bits}),
                              shorts(0x103, {1}),
                              shorts(0x106, {photometric}),
                              longs(0x111, {strip}),
                              shorts(0x115, {samples})};
  };
  picture.thumbnail = thumbnail(0);
  picture.thumbnail = thumbnail(static_cast<int64_t>(tiffBytes(picture, Order::ii).size()));
  return picture;
}

// A picture as saved by the library, and the bytes after its first marker.
std::string saved(const char* name) {
  PRaster picture = makePicture(8, 8);
  const std::string path = scratchPath(name);
  SaveFile("none", path.c_str(), &picture, nullptr);
  return readFile(path);
}

void writeStructures() {
  const std::string pixels(64, 'p'), picture = saved("plain.jpg").substr(2);
  const Picture full = everyKindOfField();
  for (const Order order : {Order::ii, Order::mm}) {
    const std::string suffix = order == Order::ii ? "_ii" : "_mm", tiff = tiffBytes(full, order);
    write("fields_tiff" + suffix, true, 3, tiff);
    write("fields_jpeg" + suffix, false, 2, jpegBytes(tiff));
    write("fields_behind_app0" + suffix, false, 20, jpegBytes(tiff, jfifSegment()) + picture);
    std::string whole = jpegBytes(tiff);
    whole.resize(whole.size() - jpegEnd.size());
    write("fields_with_picture" + suffix, false, 8, whole + picture);
    Picture linked = full;
    linked.thumbnail = {shorts(0x103, {6}), longs(0x201, {8}), longs(0x202, {600})};
    write("thumbnail_elsewhere" + suffix, false, 4, jpegBytes(tiffBytes(linked, order)));
  }
  const struct {
    const char* name;
    unsigned bits, samples, photometric;
  } kinds[] = {{"pixels_24", 24, 1, 2}, {"pixels_8", 8, 1, 1}, {"pixels_1", 1, 1, 0}};
  for (const auto& [name, bits, samples, photometric] : kinds)
    write(name, true, 0, tiffBytes(withPixels(bits, samples, photometric), Order::ii) + pixels);
}

// The first call of AddAudio creates the metadata, the second one copies it.
void writeSaved(const char* name, bool isTiff, unsigned choice, int calls) {
  std::string path = scratchPath(isTiff ? "made.tif" : "made.jpg");
  writeFile(path, saved(isTiff ? "plain.tif" : "plain.jpg"));
  PRaster picture = makePicture(8, 8), thumbnail = makePicture(16, 12);
  for (int i = 0; i < calls; ++i) AddAudio(path.data(), "a program", &picture, &thumbnail);
  write(name, isTiff, choice, readFile(path));
}

// Pictures without Exif data of every kind that the codec reads.
void writeKinds() {
  const std::string path = scratchPath("kind");
  const auto add = [&](const char* format, int i, bool isTiff) {
    write(std::string("kind_") + format + std::to_string(i), isTiff, 0, readFile(path));
  };
  int count = 0;
  for (const TiffKind& kind : tiffKinds()) writeTiff(path, kind), add("tiff", count++, true);
  for (const JpegKind& kind : jpegKinds()) writeJpeg(path, kind), add("jpeg", count++, false);
  for (const PngKind& kind : pngKinds())
    for (const int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7})
      writePng(path, kind, interlace), add("png", count++, false);
  write("foreign_thumbnail", false, 0, withThumbnail(saved("plain.jpg"), readFile(path)));
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return std::puts("usage: exifkeep_make_seeds FOLDER"), 2;
  folder = arguments[1];
  std::filesystem::create_directories(folder);
  writeStructures();
  writeKinds();
  writeSaved("saved_plain_jpeg", false, 0, 0);
  writeSaved("saved_plain_tiff", true, 0, 0);
  writeSaved("saved_jpeg", false, 1, 1);
  writeSaved("saved_tiff", true, 1, 1);
  writeSaved("saved_jpeg_again", false, 18, 2);
  writeSaved("saved_tiff_again", true, 27, 2);
}
