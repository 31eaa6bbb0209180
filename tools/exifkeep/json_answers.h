// SPDX-License-Identifier: MIT
// Answers for programs: an object for each file, in a JSON array or on separate lines, as described
// in docs/json-output.schema.json.
#pragma once

#include <exifkeep/field_list.h>

#include <functional>
#include <string>

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

// Writes an item's object.
void writeField(JsonWriter& json, const exifkeep::InfoField& field);

}  // namespace program
