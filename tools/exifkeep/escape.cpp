// SPDX-License-Identifier: MIT
// In UTF-8 the lead byte determines the length and the range of the next byte; all later bytes are
// 80 to BF.
#include "escape.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace program {
namespace {

struct Lead {
  unsigned char first, last;  // the lead bytes of this row
  size_t length;
  unsigned char secondFirst, secondLast;
};

constexpr Lead leads[] = {
    {0x00, 0x7F, 1, 0x00, 0x00}, {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

const Lead* findLead(unsigned char byte) {
  for (const Lead& lead : leads)
    if (byte >= lead.first && byte <= lead.last) return &lead;
  return nullptr;
}

char32_t payloadOfLead(unsigned char byte, size_t length) {
  return length == 1 ? byte : byte & (0x7Fu >> length);
}

Utf8Step firstUtf8Step(std::string_view text) {
  const auto byteAt = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
  const Lead* lead = findLead(byteAt(0));
  if (!lead) return {text.substr(0, 1), U'\uFFFD', false};
  char32_t codePoint = payloadOfLead(byteAt(0), lead->length);
  for (size_t i = 1; i < lead->length; ++i) {
    const unsigned char from = i == 1 ? lead->secondFirst : 0x80;
    const unsigned char to = i == 1 ? lead->secondLast : 0xBF;
    if (i == text.size() || byteAt(i) < from || byteAt(i) > to)
      return {text.substr(0, i), U'\uFFFD', false};
    codePoint = codePoint << 6 | (byteAt(i) & 0x3Fu);
  }
  return {text.substr(0, lead->length), codePoint, true};
}

// Characters that must not be shown: control characters (C0, DEL, C1), line and paragraph
// separators, and marks that change the direction of writing.
bool isControl(char32_t codePoint) {
  struct Range {
    char32_t first, last;
  };
  constexpr Range controls[] = {
      {0x00, 0x1F},     {0x7F, 0x9F},     {0x061C, 0x061C},
      {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069},
  };
  return codePoint <= std::end(controls)[-1].last &&
         std::any_of(std::begin(controls), std::end(controls), [codePoint](const Range& range) {
           return codePoint >= range.first && codePoint <= range.last;
         });
}

// The number with this many hexadecimal digits, after a prefix.
std::string hexadecimal(std::string_view prefix, int digits, unsigned value) {
  std::string text(prefix);
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    text += "0123456789abcdef"[value >> shift & 0xF];
  return text;
}

std::string escapedControl(char32_t codePoint) {
  switch (codePoint) {
    case U'\n': return "\\n";
    case U'\r': return "\\r";
    case U'\t': return "\\t";
    default:
      return codePoint < 0x80 ? hexadecimal("\\x", 2, codePoint) : hexadecimal("\\u", 4, codePoint);
  }
}

std::string escapedBytes(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) text += hexadecimal("\\x", 2, static_cast<unsigned char>(byte));
  return text;
}

// Copies a few characters to `to`. Returns 0 if all of them are ASCII and need no escaping in JSON:
// each term sets bit 7 of a byte that is not ASCII, below the space, a quote, a backslash or DEL. A
// carry from one of those to the next byte does no harm.
template <typename Piece>
Piece copyPiece(const char* from, char* to) {
  constexpr Piece ones = static_cast<Piece>(-1) / 0xFF;
  Piece piece;
  std::memcpy(&piece, from, sizeof piece);
  std::memcpy(to, &piece, sizeof piece);
  const auto found = piece | (piece - ' ' * ones) | ((piece ^ '"' * ones) - ones) |
                     ((piece ^ '\\' * ones) - ones) | (piece + ones);
  return found & 0x80 * ones;
}

// Copies a text in pieces of this type, of which two may overlap. REQUIRES: it is not shorter.
template <typename Piece>
bool copyPlainPieces(std::string_view text, char* to) {
  const size_t last = text.size() - sizeof(Piece);
  Piece found = copyPiece<Piece>(text.data() + last, to + last);
  for (size_t at = 0; at < last; at += sizeof(Piece))
    found |= copyPiece<Piece>(text.data() + at, to + at);
  return found == 0;
}

constexpr char base64Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The two digits of each number of twelve bits.
constexpr auto base64Pairs = [] {
  std::array<std::array<char, 2>, 64 * 64> pairs{};
  for (size_t i = 0; i < pairs.size(); ++i) pairs[i] = {base64Digits[i / 64], base64Digits[i % 64]};
  return pairs;
}();

std::string_view htmlOf(const Utf8Step& step) {
  switch (step.codePoint) {
    case U'&': return "&amp;";
    case U'<': return "&lt;";
    case U'>': return "&gt;";
    case U'"': return "&quot;";
    case U'\'': return "&#39;";
    case U'\n':
    case U'\t': return step.bytes;
    default: return step.valid && !isControl(step.codePoint) ? step.bytes : "\uFFFD";
  }
}

}  // namespace

Utf8Step takeUtf8Step(std::string_view& text) {
  const Utf8Step step = firstUtf8Step(text);
  text.remove_prefix(step.bytes.size());
  return step;
}

std::string escapeForTerminal(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const Utf8Step step = takeUtf8Step(text);
    if (!step.valid)
      escaped += escapedBytes(step.bytes);
    else if (isControl(step.codePoint))
      escaped += escapedControl(step.codePoint);
    else
      escaped += step.bytes;
  }
  return escaped;
}

std::string escapeForHtml(std::string_view text) {
  std::string escaped;
  while (!text.empty()) escaped += htmlOf(takeUtf8Step(text));
  return escaped;
}

std::string escapeForJson(std::string_view text) {
  std::string escaped;
  std::string_view unread = text;  // a part of `text`, the rest that is not appended yet
  while (!unread.empty()) {
    const Utf8Step step = takeUtf8Step(unread);
    const bool isQuoted = step.codePoint == U'"' || step.codePoint == U'\\';
    if (step.valid && !isQuoted && !isControl(step.codePoint)) continue;
    escaped.append(text.data(), step.bytes.data());
    if (!step.valid)
      escaped += "\uFFFD";
    else if (isQuoted)
      (escaped += '\\') += step.bytes;
    else
      escaped += hexadecimal("\\u", 4, step.codePoint);
    text = unread;
  }
  return escaped += text;
}

bool copyPlainJson(std::string_view text, char* to) {
  if (text.size() >= 8) return copyPlainPieces<uint64_t>(text, to);
  if (text.size() >= 4) return copyPlainPieces<uint32_t>(text, to);
  if (text.size() >= 2) return copyPlainPieces<uint16_t>(text, to);
  return text.empty() || copyPlainPieces<uint8_t>(text, to);
}

char* writeBase64(std::string_view bytes, char* to) {
  const auto byteAt = [bytes](size_t at) -> unsigned { return static_cast<uint8_t>(bytes[at]); };
  size_t at = 0;
  for (; at + 3 <= bytes.size(); at += 3) {
    const unsigned bits = byteAt(at) << 16 | byteAt(at + 1) << 8 | byteAt(at + 2);
    for (const unsigned pair : {bits >> 12, bits & 0xFFF})
      to = std::copy_n(base64Pairs[pair].data(), 2, to);
  }
  if (at == bytes.size()) return to;
  const bool isPair = at + 1 < bytes.size();
  const unsigned bits = byteAt(at) << 16 | (isPair ? byteAt(at + 1) << 8 : 0);
  *to++ = base64Digits[bits >> 18];
  *to++ = base64Digits[bits >> 12 & 0x3F];
  *to++ = isPair ? base64Digits[bits >> 6 & 0x3F] : '=';
  *to++ = '=';
  return to;
}

std::string base64(std::string_view bytes) {
  std::string text(base64Length(bytes.size()), '\0');
  writeBase64(bytes, text.data());
  return text;
}

}  // namespace program
