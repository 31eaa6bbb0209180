// Column alignment.
#include "text_table.h"

#include <algorithm>

#include "terminal_style.h"
#include "terminal_text.h"

namespace program {

void TextTable::addRow(std::string_view left, std::string_view right) {
  std::string shown = escapeForTerminal(left);
  const int width = displayWidth(shown);
  rows_.push_back({std::move(shown), escapeForTerminal(right), width});
}

std::string TextTable::text(std::string_view indent) const {
  int widest = 0;
  for (const Row& row : rows_) widest = std::max(widest, row.leftWidth);
  constexpr int gap = 2;
  std::string lines;
  for (const Row& row : rows_) {
    lines += indent;
    lines += styled(Style::label, row.left);
    if (!row.right.empty()) lines.append(widest - row.leftWidth + gap, ' ') += row.right;
    lines += '\n';
  }
  return lines;
}

}  // namespace program
