// SPDX-License-Identifier: MIT
// Copies a recording beside its picture. The shell makes the copy: it shows its progress and asks
// before it replaces a file.
#pragma once

#include <windows.h>

#include <string>

namespace exifkeep {

// The path for the recording: under its own name if that is short enough, even if such a file
// exists, or else under the first unused short name. Empty if there is no such name. REQUIRES: a
// sound path with a file name.
std::string recordingDestination(const std::string& picturePath, const std::string& soundPath);

enum class CopyResult { inPlace, cancelled, failed };

// A recording that is already at the destination is not copied.
CopyResult copyRecording(const std::string& soundPath, const std::string& destination, HWND owner);

}  // namespace exifkeep
