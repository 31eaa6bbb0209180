// SPDX-License-Identifier: MIT
// The metadata of pictures in all languages as an HTML page.
#pragma once

#include <string>

#include "file_names.h"

namespace program {

// Writes the page for these files, which first shows the selected language, to the file `out`, or
// to standard output if that is empty.
ExitStatus listAsHtml(const FileNames& files, const std::string& out);

}  // namespace program
