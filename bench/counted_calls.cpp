// SPDX-License-Identifier: MIT
// Repeats one kind of call on one picture; bench/instructions runs this under callgrind.
//
//     exifkeep_counted_calls info PICTURE TIMES
//     exifkeep_counted_calls save PICTURE TIMES DESTINATION    with a small image and thumbnail
#include <exifkeep/exifkeep.h>

#include <cstdlib>
#include <string_view>

namespace {

bool listMetadata(const char* picture) {
  CPtrList list;
  const bool listed = GetExifInfo(picture, &list) != 0;
  FreeInfoList(&list);
  return listed;
}

bool save(const char* picture, const char* destination) {
  PRaster image, thumbnail;
  return image.CreateImage(PRaster::type24Bit, 640, 480, 0, 0, 2835, 2835) &&
         thumbnail.CreateImage(PRaster::type24Bit, 160, 120, 0, 0, 2835, 2835) &&
         SaveFile(picture, destination, &image, &thumbnail) != 0;
}

}  // namespace

int main(int count, char** words) {
  const std::string_view kind = count > 3 ? words[1] : "";
  bool good = kind == "info" || (kind == "save" && count > 4);
  for (int left = count > 3 ? std::atoi(words[3]) : 0; good && left > 0; --left)
    good = kind == "info" ? listMetadata(words[2]) : save(words[2], words[4]);
  return good ? 0 : 1;
}
