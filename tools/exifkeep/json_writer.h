// Appends JSON (RFC 8259), two blanks a level, to a string. The owner may drain the string at any
// time, so no document is held whole. The output is valid UTF-8 whatever bytes a text holds.
// REQUIRES: calls nest properly, and inside an object every value follows a key.
#pragma once

#include <string>
#include <string_view>

namespace program {

class JsonWriter {
 public:
  explicit JsonWriter(std::string& out) : out_(out) {}

  void beginArray() { open('['); }
  void endArray() { close(']'); }
  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void key(std::string_view name);
  void text(std::string_view value);
  void boolean(bool value);
  void null() { literal("null"); }
  // What RFC 8259 calls a number.
  void number(std::string_view digits) { literal(digits); }

 private:
  void open(char bracket);
  void close(char bracket);
  void beginValue();
  void literal(std::string_view value);
  void newLine();
  void quoted(std::string_view text);

  std::string& out_;
  int depth_ = 0;
  bool empty_ = true;  // the open array or object has no element yet
  bool afterKey_ = false;
};

}  // namespace program
