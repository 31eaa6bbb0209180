// SPDX-License-Identifier: MIT
#include "text_table.h"

#include <algorithm>

#include "escape.h"
#include "terminal.h"

namespace program {
namespace {

struct Range {
  char32_t first, last;
};

// Combining marks, joiners and variation selectors of the scripts that may occur in Exif texts.
constexpr Range zeroWidth[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489},   {0x0591, 0x05BD}, {0x05BF, 0x05BF}, {0x05C1, 0x05C2},
    {0x05C4, 0x05C5}, {0x05C7, 0x05C7},   {0x0610, 0x061A}, {0x064B, 0x065F}, {0x0670, 0x0670},
    {0x06D6, 0x06DC}, {0x06DF, 0x06E4},   {0x06E7, 0x06E8}, {0x06EA, 0x06ED}, {0x093C, 0x093C},
    {0x0941, 0x0948}, {0x094D, 0x094D},   {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},
    {0x1160, 0x11FF}, {0x1AB0, 0x1AFF},   {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x2060, 0x2064},
    {0x20D0, 0x20FF}, {0x302A, 0x302D},   {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
    {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};

// Hangul, kana, ideographs, full-width forms and pictographs.
constexpr Range wide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x2E80, 0x303E},
    {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},
    {0xA960, 0xA97C},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <size_t count>
bool isIn(const Range (&ranges)[count], char32_t codePoint) {
  return std::any_of(std::begin(ranges), std::end(ranges), [codePoint](const Range& range) {
    return codePoint >= range.first && codePoint <= range.last;
  });
}

int columns(char32_t codePoint) {
  if (isIn(zeroWidth, codePoint)) return 0;
  return isIn(wide, codePoint) ? 2 : 1;
}

}  // namespace

int displayWidth(std::string_view text) {
  int width = 0;
  while (!text.empty()) width += columns(takeUtf8Step(text).codePoint);
  return width;
}

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
