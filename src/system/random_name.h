// Names for files and folders that nobody else is to have made before.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

// `head` and 16 hexadecimal digits from the system's source of randomness: in a folder where
// everybody may write nobody can guess the name, or take all of them.
std::string randomName(std::string_view head);

}  // namespace exifkeep
