// SPDX-License-Identifier: MIT
#include "json_writer.h"

#include "escape.h"

namespace program {

void JsonWriter::key(std::string_view name) {
  beginValue();
  ((out_ += '"') += name) += "\": ";
  afterKey_ = true;
}

void JsonWriter::text(std::string_view value) {
  beginValue();
  quoted(value);
}

void JsonWriter::boolean(bool value) {
  literal(value ? "true" : "false");
}

void JsonWriter::literal(std::string_view value) {
  beginValue();
  out_ += value;
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
  if (!empty_) out_ += isLine_ ? ", " : ",";
  if (depth_ > 0) newLine();
  empty_ = false;
}

void JsonWriter::newLine() {
  if (!isLine_) (out_ += '\n').append(2 * depth_, ' ');
}

void JsonWriter::quoted(std::string_view text) {
  out_ += '"';
  appendForJson(out_, text);
  out_ += '"';
}

}  // namespace program
