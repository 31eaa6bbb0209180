#include "json_answers.h"

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
  if (numbers.size() == 1) return json.number(std::to_string(numbers[0]));
  json.beginArray();
  for (const int64_t number : numbers) json.number(std::to_string(number));
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
    case InfoField::Kind::bytes: return json.text(base64(field.bytes));
    case InfoField::Kind::numbers: return writeNumbers(json, field.numbers);
    case InfoField::Kind::rationals: return writeRationals(json, field.numbers);
  }
}

}  // namespace

ExitStatus answerAsJson(
    const FileNames& files,
    const std::function<ExitStatus(JsonWriter& json, const std::string& path)>& answer) {
  std::string text;
  JsonWriter json(text);
  json.beginArray();
  const ExitStatus status = files.forEach([&](const std::string& path) {
    json.beginObject();
    json.key("file");
    json.text(path);
    const ExitStatus one = answer(json, path);
    json.endObject();
    printBytes(text);
    text.clear();
    return one;
  });
  json.endArray();
  printBytes(text);
  return status;
}

void writeExif(JsonWriter& json, const std::string& path, const FileRefusal& refusal) {
  json.key("exif");
  json.boolean(!refusal.error);
  json.key("error");
  if (!refusal.error)
    json.null();
  else
    json.text(refusal.error);
  if (refusal.status == ExitStatus::failed) complainAbout(path, refusal.reason);
}

void writeField(JsonWriter& json, const InfoField& field) {
  json.beginObject();
  json.key("directory");
  json.text(nameOf(field.directory));
  json.key("tag");
  json.number(std::to_string(field.tag));
  json.key("name");
  json.text(field.name);
  json.key("raw");
  writeRaw(json, field);
  json.key("label");
  json.text(static_cast<const char*>(field.label));
  json.key("value");
  json.text(static_cast<const char*>(field.value));
  json.endObject();
}

}  // namespace program
