// SPDX-License-Identifier: MIT
#include "json_answers.h"

#include <algorithm>
#include <utility>

#include "escape.h"
#include "standard_streams.h"

namespace program {
namespace {

using exifkeep::InfoField;

const char* nameOf(InfoField::Directory directory) {
  switch (directory) {
    case InfoField::Directory::image: return "IFD0";
    case InfoField::Directory::exif: return "Exif";
    case InfoField::Directory::gps: return "GPS";
  }
  return "";
}

void writeNumbers(JsonWriter& json, std::span<const int64_t> numbers) {
  if (numbers.size() == 1) return json.number(numbers[0]);
  json.beginArray();
  for (const int64_t number : numbers) json.number(number);
  json.endArray();
}

void writeRationals(JsonWriter& json, std::span<const int64_t> numbers) {
  if (numbers.size() == 2) return writeNumbers(json, numbers);
  json.beginArray();
  for (size_t i = 0; i < numbers.size(); i += 2) writeNumbers(json, numbers.subspan(i, 2));
  json.endArray();
}

void writeRaw(JsonWriter& json, const InfoField& field) {
  switch (field.kind) {
    case InfoField::Kind::text: return json.text(field.bytes);
    case InfoField::Kind::bytes: return json.base64Text(field.bytes);
    case InfoField::Kind::numbers: return writeNumbers(json, field.numbers);
    case InfoField::Kind::rationals: return writeRationals(json, field.numbers);
  }
}

// The following two return what they have written.
std::string_view writeStart(JsonWriter& json, const InfoField& field) {
  json.beginObject();
  const size_t brace = json.written().size() - 1;
  json.key("directory");
  json.text(nameOf(field.directory));
  json.key("tag");
  json.number(field.tag);
  json.key("name");
  json.text(field.name);
  json.key("raw");
  return json.written().substr(brace);
}

std::string_view writeMembers(JsonWriter& json, const InfoField& field) {
  const size_t begin = json.written().size();
  json.key("label");
  json.text(field.label);
  json.key("value");
  return json.written().substr(begin);
}

// The objects of some files.
class Objects {
 public:
  Objects(JsonWriter::Layout layout, size_t count) : json_(layout, count) {}

  void add(const std::string& path, const JsonAnswer& answer) {
    json_.beginObject();
    json_.key("file");
    json_.text(path);
    const FileRefusal refusal = answer(json_, path);
    json_.endObject();
    if (refusal.status == ExitStatus::failed) failures_.emplace_back(path, refusal.reason);
    worst_ = std::max(worst_, refusal.status);
  }

  ExitStatus print(bool omitsComma) const {
    printBytes(json_.written().substr(omitsComma ? 1 : 0));
    for (const auto& [path, reason] : failures_) complainAbout(path, reason);
    return worst_;
  }

 private:
  JsonWriter json_;
  std::vector<std::pair<std::string, std::string>> failures_;
  ExitStatus worst_ = ExitStatus::ok;
};

}  // namespace

ExitStatus answerAsJson(const FileNames& files, size_t jobs, JsonForm form,
                        const JsonAnswer& answer) {
  const bool isArray = form == JsonForm::array;
  bool isFirst = true;
  if (isArray) printBytes("[");
  const auto examine = [&](const FileNames::Group& paths) -> FileNames::Answer {
    const auto objects = std::make_shared<Objects>(
        isArray ? JsonWriter::Layout::element : JsonWriter::Layout::line, paths.size());
    for (const std::string& path : paths) objects->add(path, answer);
    return [&isFirst, isArray, objects] {
      const bool omitsComma = std::exchange(isFirst, false) && isArray;
      return objects->print(omitsComma);
    };
  };
  // An array is of no use before its end, so a few objects can share a write.
  const ExitStatus status = files.forEach(jobs, isArray ? 8 : 1, examine);
  if (isArray) printBytes(isFirst ? "]\n" : "\n]\n");
  return status;
}

void writeExif(JsonWriter& json, const FileRefusal& refusal) {
  json.key("exif");
  json.boolean(!refusal.error);
  json.key("error");
  if (!refusal.error)
    json.null();
  else
    json.text(refusal.error);
}

void FieldWriter::write(JsonWriter& json, const InfoField& field) {
  Frame& frame = frameOf(field);
  if (frame.name != field.name) return writeNew(json, field, frame);
  json.repeatObjectStart(frame.start);
  writeRaw(json, field);
  json.repeatMembers(frame.members);
  json.text(field.value);
  json.endObject();
}

void FieldWriter::writeNew(JsonWriter& json, const InfoField& field, Frame& frame) {
  frame.start = writeStart(json, field);
  writeRaw(json, field);
  frame.members = writeMembers(json, field);
  frame.name = field.name;
  json.text(field.value);
  json.endObject();
}

std::unique_ptr<FieldWriter> FieldWriters::take() {
  const std::lock_guard lock(mutex_);
  if (unused_.empty()) return std::make_unique<FieldWriter>();
  std::unique_ptr<FieldWriter> writer = std::move(unused_.back());
  unused_.pop_back();
  return writer;
}

void FieldWriters::giveBack(std::unique_ptr<FieldWriter> writer) {
  const std::lock_guard lock(mutex_);
  unused_.push_back(std::move(writer));
}

}  // namespace program
