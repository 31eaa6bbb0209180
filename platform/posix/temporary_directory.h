// The calling thread's temporary directory, as far as other calls need to know of it.
#pragma once

#include <string_view>

namespace exifkeep {

// Whether the path names an entry of this thread's temporary directory.
bool isTemporaryPath(std::string_view path) noexcept;

}  // namespace exifkeep
