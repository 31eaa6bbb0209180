// SPDX-License-Identifier: MIT
// A table of two columns, aligned for a terminal, with each row on one line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace program {

// The width of `text` (UTF-8 without control characters) on a terminal: wide characters count 2,
// combining marks 0 (UAX #11). Independent of the process locale.
int displayWidth(std::string_view text);

class TextTable {
 public:
  // Texts may be invalid UTF-8; they are escaped here.
  void addRow(std::string_view left, std::string_view right);
  std::string text(std::string_view indent = "") const;

 private:
  struct Row {
    std::string left, right;
    int leftWidth;
  };
  std::vector<Row> rows_;
};

}  // namespace program
