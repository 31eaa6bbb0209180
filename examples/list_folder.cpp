// SPDX-License-Identifier: MIT
// list_folder: shows the properties of all Exif pictures in a folder.
//
//   list_folder FOLDER
//
// Shows how a host recognises Exif files, reads their properties and frees the list.
#include <exifkeep/exifkeep.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// The host owns the list, but the library owns the items: only FreeInfoList can destroy them. A
// wrapper like this one ensures that it is always called.
class Properties {
 public:
  Properties() = default;
  ~Properties() { FreeInfoList(&list_); }
  Properties(const Properties&) = delete;
  Properties& operator=(const Properties&) = delete;

  // False if the file is not an Exif picture or cannot be opened.
  bool read(const std::string& picture) { return GetExifInfo(picture.c_str(), &list_) == 1; }

  // Labels and values are in the user's language; see SetThreadUILanguage.
  void print() const {
    // A CString converts to std::string_view and const char*.
    for (const exifkeep::InfoItem& item : exifkeep::items(list_))
      std::cout << "  " << item.label << ": " << item.value << '\n';
  }

 private:
  exifkeep::InfoList list_;
};

// The picture has only the name of the recording, which should be in the same folder.
void printRecording(const fs::path& picture) {
  char name[15];  // an 8.3 name and its NUL; the library requires all 15 bytes
  if (GetSoundFile(picture.string().c_str(), name) == 0) return;
  const bool isThere = fs::exists(picture.parent_path() / name);
  std::cout << "  Recording: " << name << (isThere ? "\n" : " (missing)\n");
}

// False if the file is not an Exif picture.
bool printPicture(const fs::path& picture) {
  Properties properties;
  if (!properties.read(picture.string())) return false;
  std::cout << picture.filename().string() << " (Exif " << GetExifVersion(picture.string().c_str())
            << ")\n";
  properties.print();
  printRecording(picture);
  return true;
}

// Sorted by name, because the system's order is arbitrary.
std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  // The library opens only regular files; this just saves calls.
  for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: list_folder FOLDER\n";
    return 2;
  }
  try {
    int pictures = 0;
    for (const fs::path& file : filesIn(arguments[1]))
      if (printPicture(file)) ++pictures;
    std::cout << pictures << " Exif pictures\n";
    return 0;
  } catch (const std::exception& error) {
    // Thrown by the standard library. The exported functions never throw.
    std::cerr << "list_folder: " << error.what() << '\n';
    return 1;
  }
}
