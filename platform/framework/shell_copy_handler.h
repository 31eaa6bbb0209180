// SPDX-License-Identifier: MIT
/// @file
/// The host's part in copying a recording in AddAudioFile. Not used on Windows, where the shell
/// shows its own dialogs.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <cstdint>

/// Functions that AddAudioFile calls while copying a recording. They are called on the thread that
/// copies and must not throw.
struct ShellCopyHandler {
  /// Called before an existing target is replaced; false cancels the copy, as does a null pointer.
  bool (*mayOverwrite)(void* context, HWND owner, const char* source, const char* target) = nullptr;
  /// Called with the number of bytes copied so far, beginning with 0, and in total; false cancels
  /// the copy. May be null.
  bool (*progress)(void* context, HWND owner, uint64_t done, uint64_t total) = nullptr;
  /// Passed to both functions.
  void* context = nullptr;
};

/// Installs a handler for all threads of the process, or removes it if empty. Any thread may call
/// this; a copy in progress keeps its handler. Without a handler an existing target is not replaced
/// and the copy is cancelled.
EXIFKEEP_PLATFORM_API void SetShellCopyHandler(const ShellCopyHandler& handler);
