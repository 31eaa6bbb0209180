// Answers for programs: an object for each file, in a JSON array or in lines of their own.
// docs/json-output.schema.json describes them all.
#pragma once

#include <exifkeep/field_list.h>

#include <functional>
#include <string>

#include "file_names.h"
#include "json_writer.h"

namespace program {

enum class JsonForm { array, lines };

// Adds what it knows of a file to its object. A status of failed is complained about.
using JsonAnswer = std::function<FileRefusal(JsonWriter& json, const std::string& path)>;

// Calls `answer` for each file, on up to `jobs` threads.
ExitStatus answerAsJson(const FileNames& files, size_t jobs, JsonForm form,
                        const JsonAnswer& answer);

// What every object begins with: whether the file is an Exif file, and the reason (null for one
// that is).
void writeExif(JsonWriter& json, const FileRefusal& refusal);

// An item's object.
void writeField(JsonWriter& json, const exifkeep::InfoField& field);

}  // namespace program
