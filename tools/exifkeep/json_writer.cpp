// JSON output, two blanks a level.
#include "json_writer.h"

#include <cstdio>

#include "terminal_text.h"
#include "utf8.h"

namespace program {

void JsonWriter::key(std::string_view name) {
  beginValue();
  quoted(name);
  out_ += ": ";
  afterKey_ = true;
}

void JsonWriter::text(std::string_view value) {
  beginValue();
  quoted(value);
}

void JsonWriter::boolean(bool value) {
  beginValue();
  out_ += value ? "true" : "false";
}

void JsonWriter::open(char bracket) {
  beginValue();
  out_ += bracket;
  ++depth_;
  empty_ = true;
}

void JsonWriter::close(char bracket) {
  --depth_;
  if (!empty_) newLine();
  out_ += bracket;
  empty_ = false;
  if (depth_ == 0) out_ += '\n';
}

void JsonWriter::beginValue() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!empty_) out_ += ',';
  if (depth_ > 0) newLine();
  empty_ = false;
}

void JsonWriter::newLine() {
  (out_ += '\n').append(2 * depth_, ' ');
}

void JsonWriter::quoted(std::string_view text) {
  out_ += '"';
  while (!text.empty()) {
    const Utf8Step step = takeUtf8Step(text);
    if (!step.valid) {
      out_ += "\uFFFD";
    } else if (step.codePoint == U'"' || step.codePoint == U'\\') {
      (out_ += '\\') += step.bytes;
    } else if (isControl(step.codePoint)) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(step.codePoint));
      out_ += escape;
    } else {
      out_ += step.bytes;
    }
  }
  out_ += '"';
}

}  // namespace program
