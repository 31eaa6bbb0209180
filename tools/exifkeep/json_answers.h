// SPDX-License-Identifier: MIT
// Answers for programs: an object for each file, in a JSON array or on separate lines, as described
// in docs/json-output.schema.json.
#pragma once

#include <exifkeep/field_list.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "file_names.h"
#include "json_writer.h"

namespace program {

enum class JsonForm { array, lines };

// Writes the members of a file's object. If it returns the status failed, a message is printed.
using JsonAnswer = std::function<FileRefusal(JsonWriter& json, const std::string& path)>;

// Calls `answer` for each file, on up to `jobs` threads.
ExitStatus answerAsJson(const FileNames& files, size_t jobs, JsonForm form,
                        const JsonAnswer& answer);

// Writes the first members of every object: whether the file is an Exif file and, if not, the
// reason.
void writeExif(JsonWriter& json, const FileRefusal& refusal);

// Writes the objects of items. Most of an object is the same for all pictures and is written only
// once, then copied. REQUIRES: the same layout and depth of all writers, and the same language.
class FieldWriter {
 public:
  void write(JsonWriter& json, const exifkeep::InfoField& field);

 private:
  struct Frame {
    const char* name = nullptr;  // the pointer is the same for all fields of a tag; null if unused
    std::string start;           // from the object's brace to the key of the raw value
    std::string members;         // from the end of the raw value to the key of the text
  };
  void writeNew(JsonWriter& json, const exifkeep::InfoField& field, Frame& frame);

  // A hash that gives every tag a frame of its own. If two shared one, they would replace each
  // other.
  Frame& frameOf(const exifkeep::InfoField& field) {
    return frames_[field.tag * hashFactor % 0x10000 / (0x10000 / frameCount)];
  }
  static constexpr uint32_t hashFactor = 3423;
  static constexpr size_t frameCount = 512;
  std::vector<Frame> frames_{frameCount};
};

// As many writers as threads need at a time. Not thread_local: on Windows, MinGW destroys such
// objects after it has freed their memory.
class FieldWriters {
 public:
  std::unique_ptr<FieldWriter> take();
  void giveBack(std::unique_ptr<FieldWriter> writer);

 private:
  std::mutex mutex_;
  std::vector<std::unique_ptr<FieldWriter>> unused_;
};

}  // namespace program
