// SPDX-License-Identifier: MIT
// Appends JSON (RFC 8259) to a string, indented by two spaces per level or on one line. The owner
// may empty the string at any time, so that no document has to be in memory completely. The output
// is always valid UTF-8. REQUIRES: calls nest properly, and within an object every value follows a
// key.
#pragma once

#include <string>
#include <string_view>

namespace program {

class JsonWriter {
 public:
  enum class Layout {
    document,
    element,  // of an array written elsewhere: as in a document, without the commas around it
    line,
  };
  explicit JsonWriter(std::string& out, Layout layout = Layout::document)
      : out_(out), isLine_(layout == Layout::line), depth_(layout == Layout::element ? 1 : 0) {}

  void beginArray() { open('['); }
  void endArray() { close(']'); }
  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  // REQUIRES: a name that needs no escaping.
  void key(std::string_view name);
  void text(std::string_view value);
  void boolean(bool value);
  void null() { literal("null"); }
  // REQUIRES: a number according to RFC 8259.
  void number(std::string_view digits) { literal(digits); }

 private:
  void open(char bracket);
  void close(char bracket);
  void beginValue();
  void literal(std::string_view value);
  void newLine();
  void quoted(std::string_view text);

  std::string& out_;
  const bool isLine_;
  int depth_;
  bool empty_ = true;  // the open array or object has no element yet
  bool afterKey_ = false;
};

}  // namespace program
