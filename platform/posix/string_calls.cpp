// SPDX-License-Identifier: MIT
// Comparison ignores the case of ASCII letters only and orders by bytes: file name extensions and
// format names must compare the same in every locale.
#include <mbstring.h>
#include <windows.h>

#include "locale_name.h"

namespace {

int folded(char letter) {
  return static_cast<unsigned char>(exifkeep::lowerCase(letter));
}

int compareFolded(const char* left, const char* right) {
  while (*left != '\0' && folded(*left) == folded(*right)) ++left, ++right;
  return folded(*left) - folded(*right);
}

const char* chars(const unsigned char* text) {
  return reinterpret_cast<const char*>(text);
}

}  // namespace

int lstrcmpiA(LPCSTR left, LPCSTR right) {
  return compareFolded(left, right);
}

int _mbsicmp(const unsigned char* left, const unsigned char* right) {
  return compareFolded(chars(left), chars(right));
}
