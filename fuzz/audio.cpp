// SPDX-License-Identifier: MIT
// Attaches a recording to the input. All texts that are passed, such as the names of software and
// recording, come from the input and are in heap buffers of their exact size.
#include <exifkeep/exifkeep.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>

#include "budget.h"
#include "input.h"

using namespace exifkeep::fuzz;

namespace {

constexpr unsigned width = 24, height = 16;
constexpr size_t maxNameSize = 60;

class ExactBuffer {
 public:
  explicit ExactBuffer(const std::string& text)
      : bytes_(std::make_unique<char[]>(text.size() + 1)) {
    std::memcpy(bytes_.get(), text.c_str(), text.size() + 1);
  }
  char* get() const { return bytes_.get(); }

 private:
  std::unique_ptr<char[]> bytes_;
};

// The end of the input as a text of at most that many bytes.
std::string tailOf(const PictureInput& input, size_t longest) {
  const std::string& bytes = input.bytes();
  const std::string tail = bytes.substr(bytes.size() - std::min(bytes.size(), longest));
  return tail.c_str();
}

std::string fileNameOf(const PictureInput& input) {
  std::string name = tailOf(input, maxNameSize);
  std::replace(name.begin(), name.end(), '/', '_');
  return name + ".wav";
}

int addRecording(const PictureInput& input, const ExactBuffer& picture, const ExactBuffer& software,
                 PRaster& image) {
  const std::string folder = scratchPath("recordings");
  std::filesystem::create_directory(folder);
  const std::string path = folder + "/" + fileNameOf(input);
  writeFile(path, "RIFF");
  const ExactBuffer sound(path);
  const int result =
      AddAudioFile(picture.get(), software.get(), sound.get(), &image, nullptr, nullptr);
  std::filesystem::remove_all(folder);
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const PictureInput input(data, size);
  const Budget budget(input.bytes().size());
  const std::string folder = scratchPath("pictures");
  std::filesystem::create_directory(folder);
  const std::string path = folder + (input.isTiff() ? "/x.tif" : "/x.jpg");
  writeFile(path, input.bytes());

  const ExactBuffer picture(path), software(tailOf(input, 2 * input.choice()));
  PRaster image = makePicture(width, height);
  const bool isCopied = input.choice() & 1;
  const int result = isCopied ? addRecording(input, picture, software, image)
                              : AddAudio(picture.get(), software.get(), &image, nullptr);
  require(result == 0 || result == 1 || (isCopied && result == 2), "a result that does not exist");
  if (result == 1)
    requireSaved(picture.get(), width, height);
  else
    require(readFile(path) == input.bytes(), "a failed call that changed the picture");
  std::filesystem::remove_all(folder);
  budget.check();
  return 0;
}
