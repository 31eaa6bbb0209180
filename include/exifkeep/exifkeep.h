// SPDX-License-Identifier: MIT
/// @file
/// Reads and writes the Exif metadata of JPEG and TIFF pictures (Exif 2.2, TIFF 6.0).
///
/// This header declares the ten functions, the list of labels and values, and the framework, raster
/// and window types that they use. The following applies to all ten functions:
///
/// - Paths and texts are NUL-terminated 8-bit strings. Paths are the file system's bytes; texts are
///   in the user's code page. On Windows both are in the code page of the process: with UTF-8,
///   which a host's manifest can choose (activeCodePage), every file name works. The library keeps
///   no pointer to a string it is given. If a path or text is null, the call does nothing and
///   returns 0.
/// - No function throws. Unless stated otherwise, the result is 1 for yes or success and 0 for no
///   or failure, including lack of memory. There is no other error code.
/// - Any thread may call any function at any time. A list or an image may be used by only one call
///   at a time. A thread cancelled during a call ends after the call.
/// - Only regular files are written, and of anything else at most a few KiB are read, without
///   waiting. Each file is closed before the call returns.
/// - A file's kind is decided by its extension (tif, tiff, jpg, jpeg or jpe in any case) and its
///   first bytes.
#pragma once

#if !(__cplusplus >= 202002L || (defined(_MSVC_LANG) && _MSVC_LANG >= 202002L))
#error "exifkeep needs C++20 or later: compile with -std=c++20, or set CMAKE_CXX_STANDARD to 20"
#endif

#include <afxwin.h>
#include <exifkeep_version.h>
#include <load_picture.h>
#include <praster.h>
#include <windows.h>

/// @cond
#if defined(_WIN32)
#define EXIFKEEP_API
#else
#define EXIFKEEP_API __attribute__((visibility("default")))
#endif
/// @endcond

/// The library's own types.
namespace exifkeep {

/// One entry of the list that GetExifInfo fills. The library creates items, and FreeInfoList
/// destroys them. The items of a call share memory, so do not remove one from its list; copy a text
/// that has to outlive the list.
struct InfoItem {
  CString label;  ///< The field's name in the user's language and code page.
  CString value;  ///< Its value as display text. Text from the file is unchanged, byte for byte.
};

/// The host's list of properties. Every element is an InfoItem*.
using InfoList = CPtrList;

/// A range over the items of a list that GetExifInfo filled. Returned by items().
class InfoItems {
 public:
  /// @cond
  class Iterator : public CPtrList::Iterator {
   public:
    using value_type = InfoItem;
    Iterator() = default;
    explicit Iterator(CPtrList::Iterator place) : CPtrList::Iterator(place) {}
    const InfoItem& operator*() const {
      return *static_cast<const InfoItem*>(CPtrList::Iterator::operator*());
    }
    const InfoItem* operator->() const { return &**this; }
    Iterator& operator++() {
      CPtrList::Iterator::operator++();
      return *this;
    }
    Iterator operator++(int) { return Iterator(CPtrList::Iterator::operator++(0)); }
  };
  explicit InfoItems(const InfoList& list) : list_(&list) {}
  Iterator begin() const { return Iterator(list_->begin()); }
  Iterator end() const { return Iterator(list_->end()); }

 private:
  const InfoList* list_;
  /// @endcond
};

/// Iterates over a list that GetExifInfo filled:
///
///     for (const exifkeep::InfoItem& item : exifkeep::items(list)) show(item.label, item.value);
///
/// @param list  holds nothing but the library's items
/// @return a view of the list, which must outlive it
inline InfoItems items(const InfoList& list) {
  return InfoItems(list);
}

}  // namespace exifkeep

extern "C" {

/// Checks whether a file is an Exif JPEG or Exif TIFF file, that is, whether the Exif directory
/// that its IFD0 points to has an ExifVersion entry (Exif 2.2, 4.6.3).
///
/// In a JPEG file the Exif APP1 segment must follow SOI, either directly or after a single APP0
/// segment (Exif 2.2, 4.7.2). Later segments are ignored.
///
/// @param path  the file
/// @return 1 or 0; 0 also if the file cannot be opened
EXIFKEEP_API int IsExifFile(const char* path) noexcept;

/// Decodes a picture and its thumbnail into the host's images.
///
/// Pixels are returned as stored: Orientation is not applied. The thumbnail is that of IFD1, either
/// JPEG or uncompressed, of at most 4,194,304 pixels and 8 MiB of JPEG data. Damaged or truncated
/// JPEG data is decoded as far as possible, and PRaster::lostRows reports how many rows are bad.
///
/// Memory and time are bounded by the size of the picture and of the file: see SECURITY.md.
///
/// @param path  the file
/// @param[out] image  may be null. Its old contents are freed; it is empty afterwards if the
///     picture cannot be decoded.
/// @param[out] thumbnail  may be null. Unchanged if the file has no thumbnail of a known kind;
///     empty if the thumbnail cannot be decoded, is outside the file or exceeds the limits.
///     Missing uncompressed pixels are black.
/// @return 0, with both images unchanged, if the file is not an Exif file, else 1. A result of 1
///     does not mean that the picture could be decoded: check PRaster::IsEmpty.
EXIFKEEP_API int OpenExifFile(const char* path, PRaster* image, PRaster* thumbnail) noexcept;

/// Lists the metadata of a picture as display texts, one exifkeep::InfoItem per field: first the
/// fields of IFD0, then those of the Exif directory (Exif 2.2, 4.6.4 and 4.6.5).
///
/// GPS fields are listed only in a FieldList (field_list.h) that requests them. The language is the
/// one selected for the thread with SetThreadUILanguage, otherwise that of the environment. The
/// code page always comes from the environment. Each call reads the environment anew. A text that a
/// language lacks is empty.
///
/// @param path  the file
/// @param[in,out] list  the host's list; items are added at its end. The library owns them: pass
///     the list to FreeInfoList before destroying it.
/// @return 1, or 0 with the list unchanged: not an Exif file, an empty path, a null list, no memory
EXIFKEEP_API int GetExifInfo(const char* path, CPtrList* list) noexcept;

/// Destroys all items of a list that GetExifInfo filled. The host still owns the list itself and
/// can use it again.
///
/// @param[in,out] list  holds nothing but the library's items; null elements are skipped
/// @return 1, or 0 for a null list
EXIFKEEP_API int FreeInfoList(CPtrList* list) noexcept;

/// Reads the version of Exif that a picture conforms to (Exif 2.2, 4.6.5 A).
///
/// @param path  the file
/// @return the version as a number, 2.2f for "0220"; 0.0f if the file is not an Exif file. The
///     four characters are not checked to be digits.
EXIFKEEP_API float GetExifVersion(const char* path) noexcept;

/// Reads the name of a picture's sound recording: RelatedSoundFile (Exif 2.2, 4.6.5 C), if it
/// contains ".wav", ".WAV" or ".Wav".
///
/// @param path  the file
/// @param[out] soundFileName  a buffer of at least 15 bytes: a name of up to 14 bytes and its NUL.
///     The name has no directory, since the recording is beside the picture. The file's existence
///     is not checked.
/// @return 1, or 0 with the buffer unchanged if the picture names no such recording
EXIFKEEP_API int GetSoundFile(const char* path, char* soundFileName) noexcept;

/// Saves an image together with the metadata of the picture that it came from.
///
/// The metadata is saved if source and destination are both JPEG or both TIFF by name and the
/// source is an Exif file; otherwise only the image is written. DateTime is set to the time of
/// saving, and the thumbnail is new; all other fields that Exif 2.2 defines and the library
/// supports are copied.
///
/// The directories and the thumbnail share 64 KiB, the size of a JPEG segment (ITU-T T.81,
/// B.1.1.4). If the directories alone do not fit, the maker note is left out (or the user comment,
/// if the maker note is at most 4 KiB), and then both. If the thumbnail does not fit, the save
/// fails; one with a smaller thumbnail may succeed. The thumbnail of a TIFF picture is not
/// compressed: 160 x 120 pixels take 57,600 bytes.
///
/// The destination is not replaced until everything is written; a failed save leaves it unchanged.
///
/// @param source  the picture whose metadata to copy; need not exist
/// @param destination  the file to write, in the format that its extension names: jpg, jpeg, jpe,
///     tif, tiff or png. May be the source. For any other extension a message box says that the
///     document could not be saved.
/// @param image  the picture to save, of any depth; remains the host's
/// @param thumbnail  the thumbnail to embed, at its own size. If it is null or empty, a thumbnail
///     of 160 x 120 pixels is made from the image. A TIFF picture whose source has no thumbnail
///     directory gets none.
/// @return 1 if the destination was written, with or without metadata; otherwise 0, also for a null
///     or empty image
EXIFKEEP_API int SaveFile(const char* source, const char* destination, PRaster* image,
                          PRaster* thumbnail) noexcept;

/// Like SaveFile, but adjusts the metadata to the processing that the picture went through:
///
/// - 2, rotated: as 3, and the subject's coordinates are swapped
/// - 3, resized: PixelXDimension and PixelYDimension are set to the image's size
/// - 4, 5 and 6, filtered: CustomRendered is set to 1
/// - all of these: Orientation and YCbCrPositioning are set to 1, and Software to the library's own
///   text
/// - any other: nothing is adjusted, as with SaveFile
///
/// No field is added that the source lacks, except Software.
///
/// @param source  as for SaveFile
/// @param destination  as for SaveFile
/// @param processCode  what was done to the picture
/// @param image  as for SaveFile
/// @param thumbnail  as for SaveFile
/// @return as SaveFile
EXIFKEEP_API int SaveProcessFile(const char* source, const char* destination, int processCode,
                                 PRaster* image, PRaster* thumbnail) noexcept;

/// Rewrites a picture with an image and the name of a recording that the host has made or will
/// make. RelatedSoundFile is set to a name derived from the picture's own, in 8.3 form with the
/// extension wav; GetSoundFile returns it.
///
/// A picture without Exif data gets new Exif data. If it is TIFF by name, it remains TIFF; any
/// other picture is saved as a JPEG file beside it with the extension jpg, replacing any file of
/// that name. The picture's name must contain a ".".
///
/// @param[in,out] picturePath  the picture. The new path is written back here, so there must be
///     room for a three-letter extension and the NUL. It may change even if the save fails.
/// @param softwareName  the host's name, for Software (Exif 2.2, 4.6.4 D); cut to 255 bytes
/// @param[in,out] image  the picture's pixels. Converted to 24 bits if the file had no Exif data.
/// @param thumbnail  as for SaveFile
/// @return 1 if the picture was rewritten, else 0, with the picture unchanged
EXIFKEEP_API int AddAudio(char* picturePath, const char* softwareName, PRaster* image,
                          PRaster* thumbnail) noexcept;

/// Like AddAudio, for a recording that exists: first copies it beside the picture, under its own
/// name if that has at most 12 bytes, else under an unused short name.
///
/// A recording that is there already is not copied. The host's handler (SetShellCopyHandler) is
/// called to show progress and to ask whether an existing file may be overwritten; without a
/// handler an existing file is kept and the call is cancelled.
///
/// @param[in,out] picturePath  as for AddAudio
/// @param softwareName  as for AddAudio
/// @param[in,out] soundPath  the recording. Its new name, of at most 12 bytes and without a
///     directory, is written back here once the recording is in place. If it has to be copied, its
///     path and the new one may have at most 258 bytes each.
/// @param[in,out] image  as for AddAudio
/// @param thumbnail  as for SaveFile
/// @param owner  the owner window of any questions, passed to the handler; may be null
/// @return 1 if the recording is attached; 2 if the user cancelled the copy, with nothing changed;
///     0 on failure, with the picture unchanged, although the recording may have been copied
EXIFKEEP_API int AddAudioFile(char* picturePath, const char* softwareName, char* soundPath,
                              PRaster* image, PRaster* thumbnail, HWND owner) noexcept;

}  // extern "C"
