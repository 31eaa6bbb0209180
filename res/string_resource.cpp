// The string table on Windows: the resources of the module that this file is linked into.
#include "info/string_table.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the module's first bytes, as the linker names them

namespace exifkeep {

const AfxStringTable stringTable{reinterpret_cast<HINSTANCE>(&__ImageBase)};

}  // namespace exifkeep
