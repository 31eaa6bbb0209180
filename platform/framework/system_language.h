// The user's language where the environment does not name it.
#pragma once

#include <windows.h>

#include <string>

namespace exifkeep {

// What the host chose for this thread, before all else; 0 for no choice. A choice on Windows cannot
// be told from the user's own setting, so there it is systemLanguage's answer.
LANGID threadLanguage();

// As a BCP 47 tag, empty when the system has no such setting. Made of the system's own calls, in
// platform/posix and platform/windows. May throw std::bad_alloc.
std::string systemLanguage();

}  // namespace exifkeep
