// The metadata of pictures in all languages, as one HTML page.
#pragma once

#include <string>

#include "file_names.h"

namespace program {

// The page of these files, with the selected language shown first; goes to the file `out`, or to
// standard output when that is empty.
ExitStatus listAsHtml(const FileNames& files, const std::string& out);

}  // namespace program
