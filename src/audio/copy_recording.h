// Puts a recording beside its picture: under which name, and by a copy through the shell, which
// shows its progress and asks before it replaces a file.
#pragma once

#include <windows.h>

#include <string>

namespace exifkeep {

// The path that the recording gets: its own name when that is short enough, whether or not such a
// file exists, else the first short name that is free. Empty when no name can be had. REQUIRES: a
// sound path with a file name.
std::string recordingDestination(const std::string& picturePath, const std::string& soundPath);

enum class CopyResult { inPlace, cancelled, failed };

// A recording that lies at the destination already is not copied.
CopyResult copyRecording(const std::string& soundPath, const std::string& destination, HWND owner);

}  // namespace exifkeep
