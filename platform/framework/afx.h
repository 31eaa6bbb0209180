/// @file
/// The framework's root class and its string. Strings hold 8-bit text without a NUL inside; short
/// ones, and texts loaded from a module, need no memory of their own. Memory shortage is reported
/// as std::bad_alloc and nothing else is thrown. Relies on windows.h for the type names only.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <compare>
#include <string>
#include <string_view>

/// @cond
#if defined(__GNUC__)
#define AFX_PRINTF_FORMAT(formatIndex, firstArgument) \
  __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define AFX_PRINTF_FORMAT(formatIndex, firstArgument)
#endif
/// @endcond

/// The root of the framework's classes. Not to be copied.
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

/// A text of 8-bit characters.
class EXIFKEEP_PLATFORM_API CString {
 public:
  /// Empty.
  CString() = default;
  /// A copy of the text; empty for null.
  CString(const char* text) : text_(text ? text : "") {}
  /// A copy of `length` bytes. REQUIRES: no NUL among them.
  CString(const char* text, int length) : text_(text, static_cast<size_t>(length)) {}
  /// @{
  /// Copies and moves as a value does.
  CString(const CString& other) : text_(other.view()) {}
  CString(CString&& other) noexcept = default;
  ~CString() = default;

  CString& operator=(const CString& other) { return *this = CString(other); }
  CString& operator=(CString&& other) noexcept = default;
  /// @}

  /// Null empties the string.
  CString& operator=(const char* text) { return *this = CString(text); }
  /// @{
  /// Appends; nothing for null or NUL.
  CString& operator+=(const CString& tail);
  CString& operator+=(const char* tail);
  CString& operator+=(char tail);
  /// @}

  /// The text with its NUL, valid until the string is changed or destroyed. A function that takes
  /// any argument, such as printf, has to be given `static_cast<const char*>(text)`.
  operator LPCSTR() const { return view().data(); }
  /// The text, valid as long; also what std::string is made of.
  operator std::string_view() const noexcept { return view(); }
  /// @{
  /// The bytes, as a container has them, which QString::fromUtf8 asks for. Valid as long.
  const char* data() const noexcept { return view().data(); }
  size_t size() const noexcept { return view().size(); }
  const char* begin() const noexcept { return data(); }
  const char* end() const noexcept { return data() + size(); }
  /// @}
  /// In bytes, without the NUL.
  int GetLength() const { return static_cast<int>(view().size()); }
  /// Whether there is no text.
  BOOL IsEmpty() const { return view().empty(); }
  /// Makes the string empty.
  void Empty() { *this = CString(); }

  /// @{
  /// A character. A position outside the text reads as NUL and is not written to. Writing NUL ends
  /// the text there.
  char GetAt(int index) const;
  char operator[](int index) const { return GetAt(index); }
  void SetAt(int index, char value);
  /// @}

  /// @{
  /// A part of the text. Counts and positions outside the text are cut to it.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  /// @}

  /// @{
  /// The position of the first (ReverseFind: last) occurrence from `start` on, or -1.
  int Find(char wanted, int start = 0) const;
  int Find(const char* wanted, int start = 0) const;
  int ReverseFind(char wanted) const;
  /// @}
  /// Replaces every `from`. Returns the number of characters replaced.
  int Replace(char from, char to);

  /// printf into this string, with "." in numbers whatever the locale. Arguments may point into it.
  void Format(const char* format, ...) AFX_PRINTF_FORMAT(2, 3);

  /// The text with this id of the thread's current module state, in the user's language and code
  /// page; FALSE and empty when it has none.
  BOOL LoadString(UINT id);

  /// @{
  /// Compares bytes, as numbers without sign.
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
  std::string_view view() const { return loaded_.data() ? loaded_ : text_; }
  std::string& ownText();

  // A text of a module's table is pointed to until this string is changed: a list of forty labels
  // is made without copying one. A copy of the string has its own text and outlives the module.
  std::string text_;
  std::string_view loaded_;  // no data: text_ counts
};

/// @{
/// Both texts, one behind the other.
EXIFKEEP_PLATFORM_API CString operator+(const CString& left, const CString& right);
EXIFKEEP_PLATFORM_API CString operator+(const CString& left, const char* right);
EXIFKEEP_PLATFORM_API CString operator+(const char* left, const CString& right);
/// @}
