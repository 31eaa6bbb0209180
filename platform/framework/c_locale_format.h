// SPDX-License-Identifier: MIT
// printf independent of the locale.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace exifkeep {

// vsnprintf in the "C" locale, whatever the locale of process and thread: decimal points are ".",
// and "%s" accepts bytes of any code page. Implemented in platform/posix and platform/windows.
int printInCLocale(char* target, size_t size, const char* format, va_list arguments);

// The text that printInCLocale prints, or empty if it fails. May throw std::bad_alloc.
std::string formatInCLocale(const char* format, va_list arguments);

}  // namespace exifkeep
