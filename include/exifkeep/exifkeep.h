// exifkeep: reads and writes the Exif metadata of JPEG and TIFF pictures (Exif 2.2, TIFF 6.0).
//
// This one include gives a host the ten functions, the list of labels and values, and the
// framework, raster and window types that cross the boundary. Paths and texts are NUL-terminated
// 8-bit strings in the user's code page and never null; nothing is thrown across the boundary.
// Every function may be called from any thread; a list or an image belongs to one call at a time.
#pragma once

#include <afxwin.h>
#include <praster.h>
#include <windows.h>

#if defined(_WIN32)
#define EXIFKEEP_API
#else
#define EXIFKEEP_API __attribute__((visibility("default")))
#endif

namespace exifkeep {

// One entry of the list that GetExifInfo fills: a field's name in the user's language and its value
// as display text. Made by the library and released by FreeInfoList only.
struct InfoItem {
  CString label;
  CString value;
};

// The host's list; every element is an InfoItem*.
using InfoList = CPtrList;

}  // namespace exifkeep

extern "C" {

// Tells whether the file at `path` is an Exif JPEG or Exif TIFF file: its extension is tif, tiff,
// jpg, jpeg or jpe, and its IFD0 points to an Exif directory that holds an ExifVersion entry
// (Exif 2.2, 4.6.3). JPEG files are accepted when the Exif APP1 segment follows SOI directly or
// behind one APP0 segment. Returns 1 or 0.
EXIFKEEP_API int IsExifFile(const char* path) noexcept;

// Decodes the picture at `path` into `image` and the thumbnail of its IFD1 into `thumbnail`; either
// may be null. What the two objects held before is replaced; a picture that cannot be decoded
// leaves `image` empty, a file without a thumbnail leaves `thumbnail` as it was. Returns 0 when the
// file is not an Exif file (the objects are then untouched), else 1, also when decoding failed.
EXIFKEEP_API int OpenExifFile(const char* path, PRaster* image, PRaster* thumbnail) noexcept;

// Appends the metadata of the picture at `path` to `list`, one exifkeep::InfoItem a field, first
// those of IFD0 and then those of the Exif directory, in the user's language. The host owns the
// list; the items stay the library's until FreeInfoList. Returns 1, or 0 (and leaves the list as it
// was) when the file is not an Exif file, the list is null or the path is empty.
EXIFKEEP_API int GetExifInfo(const char* path, CPtrList* list) noexcept;

// Removes and destroys all items of `list`. Returns 1 when the list is empty afterwards, 0 for a
// null list.
EXIFKEEP_API int FreeInfoList(CPtrList* list) noexcept;

// Returns the Exif version of the picture at `path` as a number ("0220" gives 2.2f), 0.0f when it
// has none.
EXIFKEEP_API float GetExifVersion(const char* path) noexcept;

// Copies the name of the WAV recording that the picture at `path` names in RelatedSoundFile
// (Exif 2.2, 4.6.5 C) into `soundFileName`, a buffer of at least 15 bytes, NUL included. The name
// has no directory: the recording lies beside the picture. Returns 1, or 0 with the buffer
// untouched when there is no such name.
EXIFKEEP_API int GetSoundFile(const char* path, char* soundFileName) noexcept;

// Saves `image` to `destination` in the format its extension names. When the source is an Exif JPEG
// saved as JPEG, or an Exif TIFF saved as TIFF, the source's metadata goes along with a new
// thumbnail: `thumbnail`, or one of 160 x 120 pixels made from the image when it is null or empty.
// Returns 1 when the destination was written, else 0 (also for a null or empty image).
EXIFKEEP_API int SaveFile(const char* source, const char* destination, PRaster* image,
                          PRaster* thumbnail) noexcept;

// SaveFile with metadata adjusted for a kind of processing: codes 2 to 6 set Orientation and
// YCbCrPositioning to 1 and name the software; 2 (turned) and 3 (resized) update the pixel
// dimensions, 2 also swaps the subject coordinates; 4, 5 and 6 (filtered) set CustomRendered. Any
// other code changes nothing.
EXIFKEEP_API int SaveProcessFile(const char* source, const char* destination, int processCode,
                                 PRaster* image, PRaster* thumbnail) noexcept;

// Rewrites the picture at `picturePath` with `image`, recording `softwareName` (at most 255 bytes)
// as Software and a sound file name made from the picture's own (8.3, extension wav) as
// RelatedSoundFile. A picture without Exif data gets a new Exif segment and, unless it is TIFF, the
// extension jpg: the new path is written back into `picturePath`, which must have room for a
// three-letter extension; its image is converted to 24 bits. Returns 1 when the picture was
// rewritten, else 0.
EXIFKEEP_API int AddAudio(char* picturePath, const char* softwareName, PRaster* image,
                          PRaster* thumbnail) noexcept;

// AddAudio for an existing recording: copies the file at `soundPath` beside the picture under a
// name of at most 12 bytes, which is written back into `soundPath` and recorded. `owner` is the
// window for the shell's progress and overwrite questions. Returns 1, 2 when the user cancelled the
// copy, 0 on failure.
EXIFKEEP_API int AddAudioFile(char* picturePath, const char* softwareName, char* soundPath,
                              PRaster* image, PRaster* thumbnail, HWND owner) noexcept;

}  // extern "C"
