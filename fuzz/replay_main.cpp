// SPDX-License-Identifier: MIT
// Runs a fuzz target on files and folders of files, without a fuzzer: the corpus as ordinary tests.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fs = std::filesystem;

namespace {

int replayed = 0;

void replay(const fs::path& path) {
  if (fs::is_directory(path)) {
    for (const auto& entry : fs::directory_iterator(path)) replay(entry.path());
    return;
  }
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);  // the last line is then the file that ended the program
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  ++replayed;
}

}  // namespace

int main(int count, char** paths) {
  for (int i = 1; i < count; ++i) replay(paths[i]);
  return replayed > 0 ? 0 : 1;
}
