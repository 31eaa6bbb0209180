/// @file
/// The part of the Win32 interface that this library uses, for systems that are not Windows: types,
/// constants and calls carry their real names and meanings, so that code written against this
/// header also compiles against the real one. Kernel calls lie on POSIX files, memory and time; GDI
/// is palettes only. Integer types are 32 bits wide where the real ones are.
#pragma once

#include <cstddef>
#include <cstdint>

// All that is declared here is shown to hosts.
#pragma GCC visibility push(default)

/// @cond
// Macros, as in the real header, because image libraries define the two as macros as well.
#ifndef FALSE
#define FALSE 0
#endif
#ifndef TRUE
#define TRUE 1
#endif

#define WINAPI
#define CALLBACK
/// @endcond

/// @{
/// A type of the real interface, of the same width.
using BOOL = int;
using UINT = unsigned int;
using BYTE = unsigned char;
using WORD = uint16_t;
using DWORD = uint32_t;
using LONG = int32_t;
using LONGLONG = int64_t;
using SIZE_T = size_t;
using ULONG_PTR = uintptr_t;
using LANGID = WORD;
using LPSTR = char*;
using LPCSTR = const char*;
using LPDWORD = DWORD*;
using LPVOID = void*;
using LPCVOID = const void*;
/// @}

/// Anything the system hands out by handle.
using HANDLE = void*;
/// A block of memory: see GlobalAlloc.
using HGLOBAL = HANDLE;
/// @cond
using HGDIOBJ = void*;
struct HWND__;
/// @endcond
/// A window of the host's, in whatever form it has windows; null for none. It is handed through to
/// the host's handlers and never looked into.
using HWND = HWND__*;
/// @cond
struct HPALETTE__;
/// @endcond
/// A palette: see AllReadPalette.
using HPALETTE = HPALETTE__*;

/// @cond

struct SECURITY_ATTRIBUTES;
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
// Only the position is used: where a transfer begins, instead of the handle's own position.
struct OVERLAPPED {
  ULONG_PTR Internal, InternalHigh;
  DWORD Offset, OffsetHigh;
  HANDLE hEvent;
};
using LPOVERLAPPED = OVERLAPPED*;

union LARGE_INTEGER {
  struct {
    DWORD LowPart;
    LONG HighPart;
  } u;
  LONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;

enum FILE_INFO_BY_HANDLE_CLASS { FileEndOfFileInfo = 6 };
struct FILE_END_OF_FILE_INFO {
  LARGE_INTEGER EndOfFile;
};

struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

inline constexpr int MAX_PATH = 260;

// ---- Files -------------------------------------------------------------------------------------
// Only regular files open; a directory, FIFO, socket or device cannot be opened, and at once so.
// Sharing modes are accepted and not enforced. A handle sees the file's size as of its opening and
// its own writes since, and is for one thread at a time. A file made by CREATE_NEW after a pattern,
// the handle of another file, has that file's rights and attributes.

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(intptr_t{-1});

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
inline constexpr DWORD MOVEFILE_WRITE_THROUGH = 8;
inline constexpr DWORD REPLACEFILE_WRITE_THROUGH = 1;
inline constexpr DWORD FILE_NAME_NORMALIZED = 0;

HANDLE WINAPI CreateFileA(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD flags, HANDLE pattern);
BOOL WINAPI ReadFile(HANDLE file, LPVOID buffer, DWORD count, LPDWORD read,
                     LPOVERLAPPED overlapped);
BOOL WINAPI WriteFile(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                      LPOVERLAPPED overlapped);
BOOL WINAPI GetFileSizeEx(HANDLE file, PLARGE_INTEGER size);
BOOL WINAPI SetFileInformationByHandle(HANDLE file, FILE_INFO_BY_HANDLE_CLASS what,
                                       LPVOID information, DWORD size);
BOOL WINAPI FlushFileBuffers(HANDLE file);
BOOL WINAPI CloseHandle(HANDLE file);

BOOL WINAPI DeleteFileA(LPCSTR path);
BOOL WINAPI MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags);
// No backup is kept, and the replacement keeps its own rights: a pattern may have given it those of
// the other.
BOOL WINAPI ReplaceFileA(LPCSTR replaced, LPCSTR replacement, LPCSTR backup, DWORD flags,
                         LPVOID exclude, LPVOID reserved);
// The path behind all links of a file that was opened for reading and writing.
DWORD WINAPI GetFinalPathNameByHandleA(HANDLE file, LPSTR buffer, DWORD size, DWORD flags);
DWORD WINAPI GetFileAttributesA(LPCSTR path);

// Folders are made for their owner alone (mode 0700). The temporary one is $TMPDIR, or /tmp.
BOOL WINAPI CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
BOOL WINAPI RemoveDirectoryA(LPCSTR path);
DWORD WINAPI GetTempPathA(DWORD size, LPSTR buffer);
UINT WINAPI GetTempFileNameA(LPCSTR directory, LPCSTR prefix, UINT unique, LPSTR buffer);

/// @endcond

// ---- Memory blocks -----------------------------------------------------------------------------
// Only movable blocks exist: a handle is not an address, and a block of no bytes cannot be locked.

/// @{
/// What kind of block GlobalAlloc makes. GHND is both: a movable block of zeros.
inline constexpr UINT GMEM_MOVEABLE = 0x2;
inline constexpr UINT GMEM_ZEROINIT = 0x40;
inline constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;
/// @}

/// @{
/// A block of memory by handle: made, with its size told, locked to be used at an address that is
/// valid until the lock is taken back, and freed. Null when there is no memory; GlobalFree returns
/// null when it succeeds.
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);
LPVOID WINAPI GlobalLock(HGLOBAL block);
BOOL WINAPI GlobalUnlock(HGLOBAL block);
HGLOBAL WINAPI GlobalFree(HGLOBAL block);
/// @}

/// @cond

// ---- Time and strings --------------------------------------------------------------------------
// Comparison is bytewise and folds the case of ASCII letters only, whatever the locale.

void WINAPI GetLocalTime(LPSYSTEMTIME time);

int WINAPI lstrcmpiA(LPCSTR left, LPCSTR right);

// ---- GDI: bitmaps and palettes -----------------------------------------------------------------

/// @endcond

/// What a picture is, as PRaster and the codec tell it. Fields that are not described are 0 or
/// constant.
struct BITMAPINFOHEADER {
  DWORD biSize;          ///< 40.
  LONG biWidth;          ///< In pixels.
  LONG biHeight;         ///< In pixels; positive, for rows go from the bottom up.
  WORD biPlanes;         ///< 1.
  WORD biBitCount;       ///< Bits a pixel: 1, 8 or 24.
  DWORD biCompression;   ///< 0: none.
  DWORD biSizeImage;     ///< Bytes of all rows, or 0.
  LONG biXPelsPerMeter;  ///< Resolution in dots per metre, 0 when unknown.
  LONG biYPelsPerMeter;  ///< Likewise.
  DWORD biClrUsed;       ///< Colours of the palette, 0 for all or none.
  DWORD biClrImportant;  ///< Not used.
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

/// A colour of a palette.
struct RGBQUAD {
  BYTE rgbBlue;      ///< 0 to 255, as the others.
  BYTE rgbGreen;     ///< Green.
  BYTE rgbRed;       ///< Red.
  BYTE rgbReserved;  ///< 0.
};

/// @cond
struct PALETTEENTRY {
  BYTE peRed;
  BYTE peGreen;
  BYTE peBlue;
  BYTE peFlags;
};
using LPPALETTEENTRY = PALETTEENTRY*;

// palPalEntry stands for palNumEntries entries that follow each other.
struct LOGPALETTE {
  WORD palVersion;  // 0x300
  WORD palNumEntries;
  PALETTEENTRY palPalEntry[1];
};

HPALETTE WINAPI CreatePalette(const LOGPALETTE* palette);
UINT WINAPI GetPaletteEntries(HPALETTE palette, UINT start, UINT count, LPPALETTEENTRY entries);
/// @endcond

/// Frees a palette. FALSE when it is none.
BOOL WINAPI DeleteObject(HGDIOBJ object);

// ---- Language ----------------------------------------------------------------------------------

/// @{
/// The language of the calling thread's texts, as a Windows language id: any of German, say, gives
/// German texts. Counts before the environment, from the next call of the library on. 0 leaves the
/// choice to the environment again, as it is at first. Set gives the language back.
LANGID WINAPI SetThreadUILanguage(LANGID language);
LANGID WINAPI GetThreadUILanguage();
/// @}

// ---- Messages and error codes ------------------------------------------------------------------

/// A message box with one button, OK.
inline constexpr UINT MB_OK = 0;
/// The answer of that button.
inline constexpr int IDOK = 1;

/// @cond
inline constexpr int ERROR_SUCCESS = 0;
inline constexpr int ERROR_FILE_NOT_FOUND = 2;
inline constexpr int ERROR_PATH_NOT_FOUND = 3;
inline constexpr int ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr int ERROR_ACCESS_DENIED = 5;
inline constexpr int ERROR_INVALID_HANDLE = 6;
inline constexpr int ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr int ERROR_NOT_SAME_DEVICE = 17;
inline constexpr int ERROR_WRITE_PROTECT = 19;
inline constexpr int ERROR_WRITE_FAULT = 29;
inline constexpr int ERROR_GEN_FAILURE = 31;
inline constexpr int ERROR_SHARING_VIOLATION = 32;
inline constexpr int ERROR_HANDLE_EOF = 38;
inline constexpr int ERROR_NOT_SUPPORTED = 50;
inline constexpr int ERROR_FILE_EXISTS = 80;
inline constexpr int ERROR_INVALID_PARAMETER = 87;
inline constexpr int ERROR_DISK_FULL = 112;
inline constexpr int ERROR_DIR_NOT_EMPTY = 145;
inline constexpr int ERROR_BUSY = 170;
inline constexpr int ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr int ERROR_IO_DEVICE = 1117;
inline constexpr int ERROR_CANCELLED = 1223;
inline constexpr int ERROR_CANT_RESOLVE_FILENAME = 1921;

// Why the last call on this thread failed.
DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD error);
/// @endcond

#pragma GCC visibility pop
