// What stands between the names of a path; the one place where the library asks for the system.
#pragma once

namespace exifkeep {

#if defined(_WIN32)
inline constexpr char pathSeparator = '\\';
#else
inline constexpr char pathSeparator = '/';
#endif

}  // namespace exifkeep
