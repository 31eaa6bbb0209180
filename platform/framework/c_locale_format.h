// printf whose numbers look the same in every locale.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace exifkeep {

// vsnprintf in the "C" locale, whatever locale the process or thread is in: decimal points are ".",
// and the bytes of any code page pass "%s". Made of the system's own calls, in platform/posix and
// platform/windows.
int printInCLocale(char* target, size_t size, const char* format, va_list arguments);

// The text that printInCLocale makes; empty when the format cannot be carried out. May throw
// std::bad_alloc.
std::string formatInCLocale(const char* format, va_list arguments);

}  // namespace exifkeep
