// The kernel's and the C runtime's 8-bit string calls. Case is folded for ASCII only and order is
// that of the bytes: file name extensions and format names must compare alike in every locale.
#include <mbstring.h>
#include <windows.h>

#include <cstring>

namespace {

int folded(char letter) {
  const int byte = static_cast<unsigned char>(letter);
  return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

int compareFolded(const char* left, const char* right) {
  while (*left != '\0' && folded(*left) == folded(*right)) ++left, ++right;
  return folded(*left) - folded(*right);
}

const char* chars(const unsigned char* text) {
  return reinterpret_cast<const char*>(text);
}

}  // namespace

LPSTR lstrcpyA(LPSTR target, LPCSTR source) {
  return std::strcpy(target, source);
}

// At most size - 1 bytes and always a NUL; a size of 0 leaves the target alone.
LPSTR lstrcpynA(LPSTR target, LPCSTR source, int size) {
  if (size <= 0) return target;
  const std::size_t length = strnlen(source, size - 1);
  std::memmove(target, source, length);
  target[length] = '\0';
  return target;
}

LPSTR lstrcatA(LPSTR target, LPCSTR source) {
  return std::strcat(target, source);
}

int lstrlenA(LPCSTR text) {
  return text != nullptr ? static_cast<int>(std::strlen(text)) : 0;
}

int lstrcmpA(LPCSTR left, LPCSTR right) {
  return std::strcmp(left, right);
}

int lstrcmpiA(LPCSTR left, LPCSTR right) {
  return compareFolded(left, right);
}

int _mbscmp(const unsigned char* left, const unsigned char* right) {
  return std::strcmp(chars(left), chars(right));
}

int _mbsicmp(const unsigned char* left, const unsigned char* right) {
  return compareFolded(chars(left), chars(right));
}
