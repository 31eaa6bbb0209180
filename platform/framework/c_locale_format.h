// printf whose numbers look the same in every locale.
#pragma once

#include <cstdarg>
#include <string>

namespace exifkeep {

// vsnprintf in the "C" locale, whatever locale the process or thread is in; empty when the format
// cannot be carried out. May throw std::bad_alloc.
std::string formatInCLocale(const char* format, va_list arguments);

}  // namespace exifkeep
