// SPDX-License-Identifier: MIT
/// @file
/// The framework's root class and its string. Strings have 8-bit characters and no NUL inside.
/// Short ones, and texts loaded from a module, allocate no memory. The only exception thrown is
/// std::bad_alloc.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <compare>
#include <cstring>
#include <string>
#include <string_view>
#include <variant>

/// @cond
#if defined(__GNUC__)
#define AFX_PRINTF_FORMAT(formatIndex, firstArgument) \
  __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define AFX_PRINTF_FORMAT(formatIndex, firstArgument)
#endif
/// @endcond

/// The root of the framework's classes. Cannot be copied.
class EXIFKEEP_PLATFORM_API CObject {
 public:
  /// @cond
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;
  virtual ~CObject() = default;
  /// @endcond

 protected:
  CObject() = default;
};

/// A string of 8-bit characters.
class EXIFKEEP_PLATFORM_API CString {
 public:
  /// Empty.
  CString() = default;
  /// A copy of the text, or empty if it is null.
  CString(const char* text) : CString(std::string_view(text ? text : "")) {}
  /// A copy of `length` bytes. REQUIRES: no NUL among them.
  CString(const char* text, int length)
      : CString(std::string_view(text, static_cast<size_t>(length))) {}
  /// @{
  /// Copies and moves like a value.
  CString(const CString& other) : CString(other.view()) {}
  CString(CString&& other) noexcept = default;
  ~CString() = default;

  CString& operator=(const CString& other) { return *this = CString(other); }
  CString& operator=(CString&& other) noexcept = default;
  /// @}

  /// Null empties the string.
  CString& operator=(const char* text) { return *this = CString(text); }
  /// @{
  /// Appends. Null and NUL append nothing.
  CString& operator+=(const CString& tail);
  CString& operator+=(const char* tail);
  CString& operator+=(char tail);
  /// @}

  /// The text with its NUL, valid until the string is changed or destroyed. To a variadic function
  /// such as printf, pass `static_cast<const char*>(text)`.
  operator LPCSTR() const { return view().data(); }
  /// The text, valid likewise. A std::string can be made from it.
  operator std::string_view() const noexcept { return view(); }
  /// @{
  /// The bytes as a container, for example for QString::fromUtf8. Valid likewise.
  const char* data() const noexcept { return view().data(); }
  size_t size() const noexcept { return view().size(); }
  const char* begin() const noexcept { return data(); }
  const char* end() const noexcept { return data() + size(); }
  /// @}
  /// The length in bytes, without the NUL.
  int GetLength() const { return static_cast<int>(view().size()); }
  /// Whether the length is 0.
  BOOL IsEmpty() const { return view().empty(); }
  /// Makes the string empty.
  void Empty() { *this = CString(); }

  /// @{
  /// A character. Outside the text, NUL is read and nothing is written. Writing NUL truncates the
  /// text there.
  char GetAt(int index) const;
  char operator[](int index) const { return GetAt(index); }
  void SetAt(int index, char value);
  /// @}

  /// @{
  /// A part of the text. Counts and positions are limited to the text.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  /// @}

  /// @{
  /// The position of the first occurrence from `start` on (ReverseFind: of the last one), or -1.
  int Find(char wanted, int start = 0) const;
  int Find(const char* wanted, int start = 0) const;
  int ReverseFind(char wanted) const;
  /// @}
  /// Replaces every `from`. Returns the number of characters replaced.
  int Replace(char from, char to);

  /// Formats like printf, with "." in numbers whatever the locale. Arguments may point into this
  /// string.
  void Format(const char* format, ...) AFX_PRINTF_FORMAT(2, 3);

  /// Loads a text of the thread's current module state, in the user's language and code page.
  /// FALSE, with the string empty, if there is no such text.
  BOOL LoadString(UINT id);
  /// @cond
  // Refers to a text of a module instead of copying it. REQUIRES: a NUL follows it.
  void refer(std::string_view text) { text_ = text; }
  // A text of up to `capacity` bytes, which `write(begin)` writes, returning its end.
  template <class Write>
  static CString written(size_t capacity, const Write& write) {
    return CString(capacity, write);
  }
  /// @endcond

  /// @{
  /// Compares the bytes as unsigned numbers.
  friend bool operator==(const CString& left, const CString& right) {
    return left.view() == right.view();
  }
  friend bool operator==(const CString& left, const char* right) { return left.view() == right; }
  friend std::strong_ordering operator<=>(const CString& left, const CString& right) {
    return left.view() <=> right.view();
  }
  friend std::strong_ordering operator<=>(const CString& left, const char* right) {
    return left.view() <=> right;
  }
  /// @}

 private:
  struct ShortText {
    template <class Write>
    explicit ShortText(const Write& write) {
      char* end = write(bytes);
      *end = '\0';
      length = static_cast<uint8_t>(end - bytes);
    }
    char bytes[31];
    uint8_t length;
  };
  using Storage = std::variant<std::string_view, ShortText, std::string>;

  template <class Write>
  CString(size_t capacity, const Write& write)
      : text_(capacity < sizeof ShortText::bytes
                  ? Storage(std::in_place_type<ShortText>, write)
                  : Storage(std::in_place_type<std::string>, longText(capacity, write))) {}
  explicit CString(std::string_view text)
      : CString(text.size(), [text](char* to) {
          std::memcpy(to, text.data(), text.size());
          return to + text.size();
        }) {}

  template <class Write>
  static std::string longText(size_t capacity, const Write& write) {
    std::string text(capacity, '\0');
    text.resize(static_cast<size_t>(write(text.data()) - text.data()));
    return text;
  }

  std::string_view view() const {
    if (const auto* loaded = std::get_if<std::string_view>(&text_)) return *loaded;
    if (const auto* copied = std::get_if<ShortText>(&text_)) return {copied->bytes, copied->length};
    return *std::get_if<std::string>(&text_);
  }
  std::string& ownText();
  void append(std::string_view tail);

  // A text from a module's table is not copied until this string is changed, so that a list of
  // forty labels needs no copies. A copy of the string has its own text and may outlive the module.
  // Short texts, such as dates, are in the string itself until it is changed.
  Storage text_ = std::string_view("");
};

/// @{
/// Concatenation.
EXIFKEEP_PLATFORM_API CString operator+(const CString& left, const CString& right);
EXIFKEEP_PLATFORM_API CString operator+(const CString& left, const char* right);
EXIFKEEP_PLATFORM_API CString operator+(const char* left, const CString& right);
/// @}
