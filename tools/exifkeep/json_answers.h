// Answers for programs: a JSON array with an object for each file. docs/json-output.schema.json
// describes them all.
#pragma once

#include <exifkeep/field_list.h>

#include <functional>
#include <string>

#include "file_names.h"
#include "json_writer.h"

namespace program {

// Has `answer` add what it knows of a file to its object.
ExitStatus answerAsJson(
    const FileNames& files,
    const std::function<ExitStatus(JsonWriter& json, const std::string& path)>& answer);

// What every object begins with: whether the file is an Exif file, and the reason (null for one
// that is). Complains about a file that cannot be opened.
void writeExif(JsonWriter& json, const std::string& path, const FileRefusal& refusal);

// An item's object.
void writeField(JsonWriter& json, const exifkeep::InfoField& field);

}  // namespace program
