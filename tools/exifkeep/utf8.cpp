// UTF-8 steps: a lead byte gives the length and the range of the byte behind it; every later byte
// is 80 to BF.
#include "utf8.h"

namespace program {
namespace {

struct Lead {
  unsigned char first, last;  // lead bytes of this row
  std::size_t length;
  unsigned char secondFirst, secondLast;
};

constexpr Lead leads[] = {
    {0x00, 0x7F, 1, 0x00, 0x00}, {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

const Lead* findLead(unsigned char byte) {
  for (const Lead& lead : leads) {
    if (byte >= lead.first && byte <= lead.last) return &lead;
  }
  return nullptr;
}

char32_t payloadOfLead(unsigned char byte, std::size_t length) {
  return length == 1 ? byte : byte & (0x7Fu >> length);
}

}  // namespace

Utf8Step firstUtf8Step(std::string_view text) {
  const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const Lead* lead = findLead(byteAt(0));
  if (lead == nullptr) return {text.substr(0, 1), U'\uFFFD', false};
  char32_t codePoint = payloadOfLead(byteAt(0), lead->length);
  for (std::size_t i = 1; i < lead->length; ++i) {
    const unsigned char from = i == 1 ? lead->secondFirst : 0x80;
    const unsigned char to = i == 1 ? lead->secondLast : 0xBF;
    if (i == text.size() || byteAt(i) < from || byteAt(i) > to) {
      return {text.substr(0, i), U'\uFFFD', false};
    }
    codePoint = codePoint << 6 | (byteAt(i) & 0x3Fu);
  }
  return {text.substr(0, lead->length), codePoint, true};
}

Utf8Step takeUtf8Step(std::string_view& text) {
  const Utf8Step step = firstUtf8Step(text);
  text.remove_prefix(step.bytes.size());
  return step;
}

}  // namespace program
