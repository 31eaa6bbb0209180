// SPDX-License-Identifier: MIT
// The code page is the charset of the POSIX locale for text: the part after "." in the first of
// LC_ALL, LC_CTYPE and LANG that is set. If there is none, or the system does not know it, it is
// UTF-8. Characters are converted exactly or become "?", never a similar character. Uses iconv.
#include <code_page.h>

#include <iconv.h>

#include <algorithm>
#include <cerrno>

#include "locale_name.h"

namespace exifkeep {
namespace {

const iconv_t noConverter = reinterpret_cast<iconv_t>(-1);

// A "/" would introduce options for iconv.
bool isCharsetName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char letter) {
    return isAsciiLetterOrDigit(letter) || letter == '-' || letter == '_' || letter == ':';
  });
}

size_t characterLength(std::string_view utf8) {
  size_t length = 1;
  while (length < utf8.size() && (utf8[length] & 0xC0) == 0x80) ++length;
  return length;
}

// Converts as much as possible, appends it to `text` and returns the number of bytes converted.
size_t convert(iconv_t converter, std::string_view utf8, std::string& text) {
  char buffer[256];
  char* from = const_cast<char*>(utf8.data());
  size_t left = utf8.size();
  for (bool full = true; full;) {
    char* to = buffer;
    size_t room = sizeof buffer;
    full = iconv(converter, &from, &left, &to, &room) == static_cast<size_t>(-1) && errno == E2BIG;
    text.append(buffer, to);
  }
  return utf8.size() - left;
}

}  // namespace

std::unique_ptr<CodePageEncoder> CodePageEncoder::forUser() {
  return forCharset(userCharset(LocaleVariables()));
}

std::unique_ptr<CodePageEncoder> CodePageEncoder::forCharset(std::string_view name) {
  if (isSameIgnoringCase(name, "UTF-8") || isSameIgnoringCase(name, "UTF8") || !isCharsetName(name))
    return nullptr;
  const iconv_t converter = iconv_open(std::string(name).c_str(), "UTF-8");
  if (converter == noConverter) return nullptr;
  std::unique_ptr<CodePageEncoder> encoder(new CodePageEncoder(converter));
  return encoder->keepsAscii() ? std::move(encoder) : nullptr;
}

CodePageEncoder::~CodePageEncoder() {
  iconv_close(static_cast<iconv_t>(converter_));
}

// UTF-16 and similar charsets cannot be that of a locale, as their texts contain NULs.
bool CodePageEncoder::keepsAscii() {
  std::string text;
  encode("Aa0?", text);
  return text == "Aa0?";
}

void CodePageEncoder::encode(std::string_view utf8, std::string& text) {
  const iconv_t converter = static_cast<iconv_t>(converter_);
  text.clear();
  for (;;) {
    utf8.remove_prefix(convert(converter, utf8, text));
    if (utf8.empty()) break;
    utf8.remove_prefix(characterLength(utf8));
    convert(converter, "?", text);  // through iconv because of stateful charsets
  }
  char tail[16];
  char* to = tail;
  size_t room = sizeof tail;
  iconv(converter, nullptr, nullptr, &to, &room);
  text.append(tail, to);
}

}  // namespace exifkeep
