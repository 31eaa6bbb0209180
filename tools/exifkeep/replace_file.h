// Writing a whole file at once.
#pragma once

#include <string>
#include <string_view>

namespace program {

// Gives `path` these bytes: all of them, or, after saying why on standard error, leaves what was
// there. A link keeps pointing to its file; what is no regular file, such as a terminal, is written
// to directly.
bool replaceFile(const std::string& path, std::string_view bytes);

// Whether both paths lead to one existing file.
bool isSameFile(const std::string& path, const std::string& other);

}  // namespace program
