/// @file
/// The shell's file operation, for copying one file with the progress display and overwrite question
/// that the host has installed (shell_copy_handler.h). Relies on windows.h.
#pragma once

#include <shell_copy_handler.h>
#include <windows.h>

// All that is declared here is shown to hosts.
#pragma GCC visibility push(default)

/// @cond
using FILEOP_FLAGS = WORD;

inline constexpr UINT FO_COPY = 2;
inline constexpr FILEOP_FLAGS FOF_ALLOWUNDO = 0x40;

struct SHFILEOPSTRUCTA {
  HWND hwnd;
  UINT wFunc;
  LPCSTR pFrom;  // one path, ended by two NULs
  LPCSTR pTo;    // the copy's own path (not its directory), ended by two NULs
  FILEOP_FLAGS fFlags;
  BOOL fAnyOperationsAborted;
  LPVOID hNameMappings;
  LPCSTR lpszProgressTitle;
};
using LPSHFILEOPSTRUCTA = SHFILEOPSTRUCTA*;

/// Copies the file pFrom to pTo (FO_COPY only). Returns 0, or an error code; fAnyOperationsAborted
/// tells whether the user ended it. A copy that fails or is cancelled leaves an existing target as
/// it was and nothing new behind. Source and target being one file is success without a copy.
int WINAPI SHFileOperationA(LPSHFILEOPSTRUCTA operation);
/// @endcond

#pragma GCC visibility pop
