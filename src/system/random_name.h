// SPDX-License-Identifier: MIT
// Names for new files and folders that nobody can predict.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

// `head` and 16 hexadecimal digits from the system's source of randomness. Even in a folder to
// which everybody may write, nobody can guess the name or use up all names.
std::string randomName(std::string_view head);

}  // namespace exifkeep
