// SPDX-License-Identifier: MIT
// LoadString is in module_state.cpp.
#include <afx.h>

#include <algorithm>
#include <cstdarg>

#include "c_locale_format.h"

namespace {

int positionOrNone(size_t found) {
  return found == std::string::npos ? -1 : static_cast<int>(found);
}

size_t startingAt(int start) {
  return static_cast<size_t>(std::max(start, 0));
}

const char* orEmpty(const char* text) {
  return text ? text : "";
}

}  // namespace

std::string& CString::ownText() {
  if (!std::holds_alternative<std::string>(text_)) text_ = std::string(view());
  return *std::get_if<std::string>(&text_);
}

// `tail` may be part of this string.
void CString::append(std::string_view tail) {
  if (auto* own = std::get_if<std::string>(&text_)) {
    *own += tail;
    return;
  }
  std::string joined;
  joined.reserve(size() + tail.size());
  text_ = std::move(joined.append(view()).append(tail));
}

CString& CString::operator+=(const CString& tail) {
  append(tail.view());
  return *this;
}

CString& CString::operator+=(const char* tail) {
  append(orEmpty(tail));
  return *this;
}

CString& CString::operator+=(char tail) {
  if (tail != '\0') append({&tail, 1});
  return *this;
}

char CString::GetAt(int index) const {
  return index >= 0 && index < GetLength() ? view()[static_cast<size_t>(index)] : '\0';
}

void CString::SetAt(int index, char value) {
  if (index < 0 || index >= GetLength()) return;
  if (value == '\0')
    ownText().resize(static_cast<size_t>(index));
  else
    ownText()[static_cast<size_t>(index)] = value;
}

CString CString::Left(int count) const {
  return Mid(0, count);
}

CString CString::Right(int count) const {
  return Mid(GetLength() - std::max(count, 0));
}

CString CString::Mid(int first) const {
  return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
  const int start = std::clamp(first, 0, GetLength());
  return CString(view().data() + start, std::clamp(count, 0, GetLength() - start));
}

int CString::Find(char wanted, int start) const {
  return positionOrNone(view().find(wanted, startingAt(start)));
}

int CString::Find(const char* wanted, int start) const {
  return positionOrNone(view().find(orEmpty(wanted), startingAt(start)));
}

int CString::ReverseFind(char wanted) const {
  return positionOrNone(view().rfind(wanted));
}

int CString::Replace(char from, char to) {
  if (to == '\0') return 0;
  int replaced = 0;
  for (char& letter : ownText()) {
    if (letter != from) continue;
    letter = to;
    ++replaced;
  }
  return replaced;
}

void CString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  text_ = exifkeep::formatInCLocale(format, arguments);
  va_end(arguments);
}

CString operator+(const CString& left, const CString& right) {
  return CString(left) += right;
}
CString operator+(const CString& left, const char* right) {
  return CString(left) += right;
}
CString operator+(const char* left, const CString& right) {
  return CString(left) += right;
}
