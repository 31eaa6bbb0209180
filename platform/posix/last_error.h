// Errors as the calls report them: errno in the codes of Windows, kept for each thread.
#pragma once

#include <windows.h>

namespace exifkeep {

// The Windows code of an errno value; ERROR_GEN_FAILURE for those that callers need not tell apart.
DWORD errorOf(int error) noexcept;

// Keeps the code of errno for GetLastError; FALSE, for the call to return.
BOOL failed() noexcept;

}  // namespace exifkeep
