/// @file
/// The shell's file operation, for copying one file with the host's progress display and overwrite
/// question. On Windows the shell shows these itself; here the host installs its own. Relies on
/// windows.h.
#pragma once

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

// ---- This stand-in's own addition: what the real shell does with windows ------------------------

/// The host's answers while AddAudioFile copies a recording. The functions run on the thread that
/// copies and must not throw.
struct ShellCopyHandler {
  /// Asked before an existing target is replaced; false cancels the copy. Null is always false.
  bool (*mayOverwrite)(void* context, HWND owner, const char* source, const char* target) = nullptr;
  /// Told the bytes copied so far and in all, first with 0; false cancels the copy. May be null.
  bool (*progress)(void* context, HWND owner, std::uint64_t done, std::uint64_t total) = nullptr;
  /// Handed to both functions; stays the host's.
  void* context = nullptr;
};

/// Installs the handler for all threads of the process; an empty one removes it. Any thread may
/// call it: a copy under way keeps the handler it started with. Without a handler an existing
/// target is never replaced, which counts as cancelled by the user.
void SetShellCopyHandler(const ShellCopyHandler& handler);

#pragma GCC visibility pop
