// The user's language where the environment names none.
#pragma once

#include <string>

namespace exifkeep {

// As a BCP 47 tag, empty when the system has no such setting. Made of the system's own calls, in
// platform/posix and platform/windows. May throw std::bad_alloc.
std::string systemLanguage();

}  // namespace exifkeep
