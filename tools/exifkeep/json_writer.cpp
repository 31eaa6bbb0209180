// SPDX-License-Identifier: MIT
#include "json_writer.h"

#include <algorithm>
#include <charconv>

#include "escape.h"

namespace program {
namespace {

// Long enough for the deepest level, and to copy maxSeparator bytes from any that may be the first.
constexpr char lineBreak[] = ",\n                ";
constexpr char space[] = ",                 ";

constexpr size_t usualLength = 10 * 1024;  // of the object of a picture

}  // namespace

JsonWriter::JsonWriter(Layout layout, size_t objects)
    : separator_(layout == Layout::line ? space : lineBreak),
      comma_(layout == Layout::line ? 2 : 1),
      indent_(layout == Layout::line ? 0 : 2),
      expectedLength_(objects * usualLength),
      separatorLength_(layout == Layout::element ? 4 : 2),
      omitted_(layout == Layout::element ? 0 : 2),
      depth_(layout == Layout::element ? 1 : 0) {}

void JsonWriter::escapedText(std::string_view value) {
  const std::string escaped = escapeForJson(value);
  reserve(escaped.size() + 2);
  *end_++ = '"';
  end_ = std::copy(escaped.begin(), escaped.end(), end_);
  *end_++ = '"';
}

void JsonWriter::base64Text(std::string_view bytes) {
  char* to = beginValue(base64Length(bytes.size()) + 2);
  *to++ = '"';
  to = writeBase64(bytes, to);
  *to++ = '"';
  end_ = to;
}

void JsonWriter::number(int64_t value) {
  constexpr size_t maxDigits = 20;
  char* digits = beginValue(maxDigits);
  end_ = std::to_chars(digits, digits + maxDigits, value).ptr;
}

void JsonWriter::literal(std::string_view value) {
  end_ = std::copy(value.begin(), value.end(), beginValue(value.size()));
}

void JsonWriter::open(char bracket) {
  *beginValue(1) = bracket;
  ++end_;
  enter();
  omitted_ = comma_;
}

void JsonWriter::grow(size_t count) {
  const size_t size = written().size(), larger = 2 * size + count + expectedLength_;
  auto block = std::make_unique_for_overwrite<char[]>(larger);
  std::copy_n(block_.get(), size, block.get());
  block_ = std::move(block);
  end_ = block_.get() + size;
  limit_ = block_.get() + larger;
}

}  // namespace program
