// SPDX-License-Identifier: MIT
// The string table on Windows, in the resources of the module that this file is linked into.
#include "info/string_table.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's name for the start of the module

namespace exifkeep {

const AfxStringTable stringTable{reinterpret_cast<HINSTANCE>(&__ImageBase)};

}  // namespace exifkeep
