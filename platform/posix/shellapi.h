// SPDX-License-Identifier: MIT
/// @file
/// The shell's file operation, which copies one file and calls the host's handler for progress and
/// before overwriting (shell_copy_handler.h).
#pragma once

#include <shell_copy_handler.h>
#include <windows.h>

// Everything declared here is exported.
#pragma GCC visibility push(default)

/// @cond
using FILEOP_FLAGS = WORD;

inline constexpr UINT FO_COPY = 2;
inline constexpr FILEOP_FLAGS FOF_ALLOWUNDO = 0x40;

struct SHFILEOPSTRUCTA {
  HWND hwnd;
  UINT wFunc;
  LPCSTR pFrom;  // one path, terminated by two NULs
  LPCSTR pTo;    // the path of the copy, not of its directory, terminated by two NULs
  FILEOP_FLAGS fFlags;
  BOOL fAnyOperationsAborted;
  LPVOID hNameMappings;
  LPCSTR lpszProgressTitle;
};
using LPSHFILEOPSTRUCTA = SHFILEOPSTRUCTA*;

/// Copies the file pFrom to pTo (FO_COPY only). Returns 0 or an error code. fAnyOperationsAborted
/// is set if the user cancelled. A failed or cancelled copy leaves an existing target unchanged and
/// creates no file. If source and target are the same file, nothing is copied and 0 is returned.
int WINAPI SHFileOperationA(LPSHFILEOPSTRUCTA operation);
/// @endcond

#pragma GCC visibility pop
