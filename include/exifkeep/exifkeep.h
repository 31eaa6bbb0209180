/// @file
/// Reads and writes the Exif metadata of JPEG and TIFF pictures (Exif 2.2, TIFF 6.0).
///
/// This one include gives a host the ten functions, the list of labels and values, and the
/// framework, raster and window types that cross the boundary. What holds for all ten functions:
///
/// - Paths and texts are NUL-terminated 8-bit strings. Paths are the file system's bytes; texts are
///   in the user's code page. On Windows both are in the code page of the process: with UTF-8,
///   which a host's manifest can choose (activeCodePage), every file name works. What a function
///   only reads stays the host's and is not kept. Where one of them is null, nothing is done and
///   the result is 0.
/// - Nothing is thrown. Except where said, results are 1 for yes or done and 0 for no or failed,
///   also when memory runs out. There is no further error code.
/// - Any thread may call any function at any time. A list or an image belongs to one call at a
///   time. A thread that is cancelled in a call ends after it.
/// - Only regular files are opened, and each is closed before the call returns.
/// - What a file is, is told by its extension (tif, tiff, jpg, jpeg or jpe in any case) together
///   with its first bytes.
#pragma once

#if !(__cplusplus >= 202002L || (defined(_MSVC_LANG) && _MSVC_LANG >= 202002L))
#error "exifkeep needs C++20 or later: compile with -std=c++20, or set CMAKE_CXX_STANDARD to 20"
#endif

#include <afxwin.h>
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

/// One entry of the list that GetExifInfo fills. Made by the library and destroyed by FreeInfoList
/// only; it stays in its list, since the items of a call share memory. Copy a text that has to
/// outlive the list.
struct InfoItem {
  CString label;  ///< The field's name in the user's language and code page.
  CString value;  ///< Its value as display text. Texts of the file itself are its bytes unchanged.
};

/// The host's list of properties. Every element is an InfoItem*.
using InfoList = CPtrList;

/// The items of a list that GetExifInfo filled, as a range. Made by items().
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

/// Walks a list that GetExifInfo filled:
///
///     for (const exifkeep::InfoItem& item : exifkeep::items(list)) show(item.label, item.value);
///
/// @param list  holds nothing but the library's items
/// @return a view of the list, which has to outlive it
inline InfoItems items(const InfoList& list) {
  return InfoItems(list);
}

}  // namespace exifkeep

extern "C" {

/// Tells whether a file is an Exif JPEG or Exif TIFF file: whether the Exif directory that its IFD0
/// points to holds an ExifVersion entry (Exif 2.2, 4.6.3).
///
/// A JPEG file counts when its Exif APP1 segment follows SOI directly or behind one APP0 segment
/// (Exif 2.2, 4.7.2). Segments further on are not looked for.
///
/// @param path  the file
/// @return 1 or 0; 0 also when the file cannot be opened
EXIFKEEP_API int IsExifFile(const char* path) noexcept;

/// Decodes a picture and its thumbnail into the host's images.
///
/// Pixels come as they are stored: Orientation is not applied. The thumbnail is that of IFD1, a
/// JPEG stream or uncompressed, of at most 4,194,304 pixels and 8 MiB of JPEG data. JPEG data that
/// is damaged or cut short is decoded as far as it goes: PRaster::lostRows tells.
///
/// Memory and time are bounded by the picture and the file: see SECURITY.md.
///
/// @param path  the file
/// @param[out] image  may be null. What it held is freed; it is empty afterwards when the picture
///     cannot be decoded.
/// @param[out] thumbnail  may be null. Left as it was when the file has no thumbnail of a known
///     kind, empty when it names one that cannot be delivered: not decoded, not in the file, or
///     larger than the limits. What is missing of uncompressed pixels is black.
/// @return 0, with both images untouched, when the file is not an Exif file, else 1. So 1 does not
///     mean that the picture could be decoded: ask PRaster::IsEmpty.
EXIFKEEP_API int OpenExifFile(const char* path, PRaster* image, PRaster* thumbnail) noexcept;

/// Lists the metadata of a picture as display texts, one exifkeep::InfoItem a field: first those of
/// IFD0, then those of the Exif directory (Exif 2.2, 4.6.4 and 4.6.5).
///
/// GPS fields are not listed, but for a FieldList (field_list.h) that asks for them. The language is
/// the one that SetThreadUILanguage chose for the thread; without a choice it, and always the code
/// page, is taken from the environment anew in every call. A text that a language lacks is empty.
///
/// @param path  the file
/// @param[in,out] list  the host's list; items are added at its end. They stay the library's: give
///     the list to FreeInfoList before it is destroyed.
/// @return 1, or 0 with the list as it was: not an Exif file, an empty path, a null list, no memory
EXIFKEEP_API int GetExifInfo(const char* path, CPtrList* list) noexcept;

/// Destroys all items of a list that GetExifInfo filled. The list itself stays the host's and can
/// be filled again.
///
/// @param[in,out] list  holds nothing but the library's items; null elements are skipped
/// @return 1, or 0 for a null list
EXIFKEEP_API int FreeInfoList(CPtrList* list) noexcept;

/// Reads the version of Exif that a picture was written for (Exif 2.2, 4.6.5 A).
///
/// @param path  the file
/// @return the version as a number, 2.2f for "0220"; 0.0f when the file is not an Exif file. The
///     four characters are not checked to be digits.
EXIFKEEP_API float GetExifVersion(const char* path) noexcept;

/// Reads the name of the recording that a picture is accompanied by: RelatedSoundFile (Exif 2.2,
/// 4.6.5 C), when ".wav", ".WAV" or ".Wav" is in it.
///
/// @param path  the file
/// @param[out] soundFileName  a buffer of at least 15 bytes: a name of up to 14 and its NUL. It has
///     no directory, for the recording lies beside the picture; whether it is there is not looked
///     at.
/// @return 1, or 0 with the buffer untouched when the picture names no such recording
EXIFKEEP_API int GetSoundFile(const char* path, char* soundFileName) noexcept;

/// Saves an image together with the metadata of the picture that it came from.
///
/// Metadata goes along when source and destination are both JPEG or both TIFF by name and the
/// source is an Exif file; any other save writes the image alone. DateTime becomes the time of
/// saving, and the thumbnail is a new one; the rest is what Exif 2.2 defines, as far as the library
/// carries it over.
///
/// Directories and thumbnail have 64 KiB, the size of a JPEG segment (ITU-T T.81, B.1.1.4). When
/// the directories alone do not fit, the maker note is left out (where it has at most 4 KiB, the
/// user comment instead), then both; when it is the thumbnail that does not fit, the save fails,
/// and one with a smaller thumbnail may succeed. The thumbnail of a TIFF picture is not compressed:
/// one of 160 x 120 pixels takes 57,600 bytes.
///
/// The destination is replaced when all is written; a save that fails leaves it as it was.
///
/// @param source  the picture whose metadata goes along; need not exist
/// @param destination  the file to write, in the format that its extension names: jpg, jpeg, jpe,
///     tif, tiff or png. May be the source. For another extension the message box says that the
///     document could not be saved.
/// @param image  the picture to save, of any depth; stays the host's
/// @param thumbnail  the thumbnail to embed, at its own size. Null or empty: one of 160 x 120
///     pixels is made from the image. A TIFF picture whose source has no thumbnail directory gets
///     none.
/// @return 1 when the destination was written, with metadata or without; 0 when not, also for a
///     null or empty image
EXIFKEEP_API int SaveFile(const char* source, const char* destination, PRaster* image,
                          PRaster* thumbnail) noexcept;

/// SaveFile with the metadata adjusted to what was done to the picture.
///
/// The code says what was done:
/// - 2, turned: as 3, and the subject's coordinates change places
/// - 3, resized: PixelXDimension and PixelYDimension become the image's
/// - 4, 5 and 6, filtered: CustomRendered becomes 1
/// - all of these: Orientation and YCbCrPositioning become 1, and Software becomes the library's
///   own text
/// - any other: nothing is adjusted, as with SaveFile
///
/// Fields that the source lacks stay away, except Software.
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
/// make: RelatedSoundFile becomes a name made from the picture's own, in 8.3 form with the
/// extension wav. GetSoundFile tells it.
///
/// A picture without Exif data gets new Exif data: a TIFF file by name stays one, any other becomes
/// a JPEG file beside it with the extension jpg, which replaces a file that has that name. The
/// picture's name must have a "." in it.
///
/// @param[in,out] picturePath  the picture. The new path is written back here, so there must be
///     room for a three-letter extension and the NUL; it may be changed even when the save fails.
/// @param softwareName  the host's name, for Software (Exif 2.2, 4.6.4 D); cut to 255 bytes
/// @param[in,out] image  the picture's pixels. Converted to 24 bits when the file had no Exif data.
/// @param thumbnail  as for SaveFile
/// @return 1 when the picture was rewritten, else 0, and the picture is then as it was
EXIFKEEP_API int AddAudio(char* picturePath, const char* softwareName, PRaster* image,
                          PRaster* thumbnail) noexcept;

/// AddAudio for a recording that exists: first copies it beside the picture, under its own name
/// when that has at most 12 bytes, else under a short name that is free.
///
/// A recording that lies there already is not copied. Progress, and whether an existing file may be
/// overwritten, are asked of the host through SetShellCopyHandler; without a handler an existing
/// file stays, and the call is cancelled.
///
/// @param[in,out] picturePath  as for AddAudio
/// @param softwareName  as for AddAudio
/// @param[in,out] soundPath  the recording. Its new name, of at most 12 bytes and without a
///     directory, is written back here once it is in place. To be copied, its path and the new one
///     have at most 258 bytes each.
/// @param[in,out] image  as for AddAudio
/// @param thumbnail  as for SaveFile
/// @param owner  the window that the questions belong to, handed on to the handler; may be null
/// @return 1 when the recording is attached; 2 when the user cancelled the copy and nothing was
///     changed; 0 on failure, with the picture as it was but perhaps the recording copied
EXIFKEEP_API int AddAudioFile(char* picturePath, const char* softwareName, char* soundPath,
                              PRaster* image, PRaster* thumbnail, HWND owner) noexcept;

}  // extern "C"
