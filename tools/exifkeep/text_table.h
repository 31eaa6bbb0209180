// A table of two columns for people: the right column begins where the longest text of the left one
// ends, counted in the columns of a terminal, and every row stays on one line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace program {

// The columns that `text` (UTF-8 without controls) takes: 2 for a wide character, 0 for a combining
// mark (UAX #11), whatever the process locale.
int displayWidth(std::string_view text);

class TextTable {
 public:
  // Texts are UTF-8 of any quality; they are escaped here.
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
