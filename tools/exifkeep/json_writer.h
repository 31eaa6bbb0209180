// SPDX-License-Identifier: MIT
// Writes JSON (RFC 8259), indented by two spaces per level or on one line. The text is always valid
// UTF-8. REQUIRES: calls nest properly, at most seven levels deep, and within an object every value
// follows a key.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "escape.h"

namespace program {

class JsonWriter {
 public:
  enum class Layout {
    document,
    element,  // of an array written elsewhere: as in a document, with a comma before it
    line,     // every object on a line of its own
  };
  // So many objects are expected at the top level.
  explicit JsonWriter(Layout layout = Layout::document, size_t objects = 1);

  void beginArray() { open('['); }
  void endArray() { close(']'); }
  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  // REQUIRES: a name that needs no escaping.
  void key(std::string_view name) {
    char* to = beginElement(name.size() + 4);
    *to++ = '"';
    std::memcpy(to, name.data(), name.size());
    std::memcpy(to + name.size(), "\": ", 3);
    end_ = to + name.size() + 3;
    afterKey_ = true;
  }
  void text(std::string_view value) {
    char* to = beginValue(value.size() + 2);
    *to++ = '"';
    if (!copyPlainJson(value, to)) return escapedText(value);  // overwrites the copy
    to += value.size();
    *to++ = '"';
    end_ = to;
  }
  void base64Text(std::string_view bytes);  // RFC 4648, section 4
  void boolean(bool value) { literal(value ? "true" : "false"); }
  void null() { literal("null"); }
  void number(int64_t value);
  // REQUIRES: a number according to RFC 8259.
  void number(std::string_view digits) { literal(digits); }

  // Write again what a writer of the same layout has written at the same depth: from the brace of
  // an object to a key, or from the end of a member to a key.
  void repeatObjectStart(std::string_view text) {
    repeat(text, beginElement(text.size()));
    enter();
  }
  void repeatMembers(std::string_view text) {
    reserve(text.size());
    repeat(text, end_);
  }

  // Everything written so far.
  std::string_view written() const { return {block_.get(), end_}; }

 private:
  static constexpr size_t maxSeparator = 16;

  void open(char bracket);
  void close(char bracket) {
    --depth_;
    separatorLength_ -= indent_;
    reserve(maxSeparator + 2);
    if (omitted_ == 0) separate(comma_);
    omitted_ = 0;
    *end_++ = bracket;
    if (depth_ > 0) return;
    *end_++ = '\n';
    omitted_ = separatorLength_;
  }
  void enter() {
    ++depth_;
    separatorLength_ += indent_;
  }
  void repeat(std::string_view text, char* to) {
    std::memcpy(to, text.data(), text.size());
    end_ = to + text.size();
    afterKey_ = true;
  }
  void literal(std::string_view value);
  void escapedText(std::string_view value);
  // Both make room, write the separator that is due, and return where the next bytes go. A value
  // may follow a key; an element is a key or a value without one.
  char* beginValue(size_t maxLength) {
    if (!std::exchange(afterKey_, false)) return beginElement(maxLength);
    reserve(maxLength);
    return end_;
  }
  char* beginElement(size_t maxLength) {
    reserve(maxSeparator + maxLength);
    return separate(std::exchange(omitted_, 0));
  }
  // Writes the separator without its first `omitted` bytes. Copying a constant length is fastest.
  char* separate(size_t omitted) {
    std::memcpy(end_, separator_ + omitted, maxSeparator);
    return end_ += separatorLength_ - omitted;
  }
  void reserve(size_t count) {
    if (static_cast<size_t>(limit_ - end_) < count) grow(count);
  }
  // Inline, it would slow down every function that reserves.
  [[gnu::noinline]] void grow(size_t count);

  const char* const separator_;
  const size_t comma_;   // how many bytes of the separator a first value omits
  const size_t indent_;  // what the separator grows by per level
  const size_t expectedLength_;
  size_t separatorLength_;
  size_t omitted_;  // not 0 as long as the open array or object, or the line, is empty
  size_t depth_;
  bool afterKey_ = false;
  std::unique_ptr<char[]> block_;
  char *end_ = nullptr, *limit_ = nullptr;
};

}  // namespace program
