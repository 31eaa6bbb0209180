/// @file
/// What a host answers while AddAudioFile copies a recording. Windows' own shell shows progress and
/// asks in windows of its own, so there the handler is never called.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <cstdint>

/// The host's answers while AddAudioFile copies a recording. The functions run on the thread that
/// copies and must not throw.
struct ShellCopyHandler {
  /// Asked before an existing target is replaced; false cancels the copy. Null is always false.
  bool (*mayOverwrite)(void* context, HWND owner, const char* source, const char* target) = nullptr;
  /// Told the bytes copied so far and in all, first with 0; false cancels the copy. May be null.
  bool (*progress)(void* context, HWND owner, uint64_t done, uint64_t total) = nullptr;
  /// Handed to both functions; stays the host's.
  void* context = nullptr;
};

/// Installs the handler for all threads of the process; an empty one removes it. Any thread may
/// call it: a copy under way keeps the handler it started with. Without a handler an existing
/// target is never replaced, which counts as cancelled by the user.
EXIFKEEP_PLATFORM_API void SetShellCopyHandler(const ShellCopyHandler& handler);
