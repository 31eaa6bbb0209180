// SPDX-License-Identifier: MIT
/// @file
/// The part of the Win32 interface that this library uses, implemented on POSIX. Types, constants
/// and calls have their real names and meanings, so that code written for this header also compiles
/// with the real one. Integer types have their real widths.
#pragma once

#include <cstddef>
#include <cstdint>

// Everything declared here is exported.
#pragma GCC visibility push(default)

/// @cond
// Macros, as in the real header, because image libraries define these as macros too.
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

/// A handle to a system object.
using HANDLE = void*;
/// A block of memory: see GlobalAlloc.
using HGLOBAL = HANDLE;
/// @cond
using HGDIOBJ = void*;
struct HWND__;
/// @endcond
/// A window of the host, of whatever kind, or null. It is only passed to the host's handlers.
using HWND = HWND__*;
/// @cond
struct HPALETTE__;
/// @endcond
/// A palette: see AllReadPalette.
using HPALETTE = HPALETTE__*;

/// @cond

struct SECURITY_ATTRIBUTES;
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
// Only the offset is used: the position of a transfer, instead of the handle's own.
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
// Only regular files can be opened for writing; directories, FIFOs, sockets and devices fail
// immediately. If they are opened only for reading, asking for their size fails. Sharing modes are
// accepted but not enforced. To a handle, the size of a file is that when it was opened, or first
// asked for if it is only read, updated by its own writes. Only one thread at a time may use a
// handle. If CREATE_NEW is given a pattern, the handle of another file, the new file gets that
// file's rights and attributes.

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(intptr_t{-1});

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
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
// Keeps no backup. The replacement keeps its own rights.
BOOL WINAPI ReplaceFileA(LPCSTR replaced, LPCSTR replacement, LPCSTR backup, DWORD flags,
                         LPVOID exclude, LPVOID reserved);
// The path, with all links resolved, of a file that was opened for reading and writing.
DWORD WINAPI GetFinalPathNameByHandleA(HANDLE file, LPSTR buffer, DWORD size, DWORD flags);
DWORD WINAPI GetFileAttributesA(LPCSTR path);

// Folders are created with mode 0700. The temporary folder is $TMPDIR, or /tmp.
BOOL WINAPI CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
BOOL WINAPI RemoveDirectoryA(LPCSTR path);
DWORD WINAPI GetTempPathA(DWORD size, LPSTR buffer);
UINT WINAPI GetTempFileNameA(LPCSTR directory, LPCSTR prefix, UINT unique, LPSTR buffer);

/// @endcond

// ---- Memory blocks -----------------------------------------------------------------------------
// All blocks are movable: a handle is not an address. Empty blocks cannot be locked.

/// @{
/// The kind of block for GlobalAlloc. GHND is both: movable and zeroed.
inline constexpr UINT GMEM_MOVEABLE = 0x2;
inline constexpr UINT GMEM_ZEROINIT = 0x40;
inline constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;
/// @}

/// @{
/// Allocate and free a block of memory, and lock it to get its address, which is valid until it is
/// unlocked. GlobalAlloc returns null if memory runs out, GlobalFree on success.
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);
LPVOID WINAPI GlobalLock(HGLOBAL block);
BOOL WINAPI GlobalUnlock(HGLOBAL block);
HGLOBAL WINAPI GlobalFree(HGLOBAL block);
/// @}

/// @cond

// ---- Time and strings --------------------------------------------------------------------------
// Comparison ignores the case of ASCII letters only, whatever the locale.

void WINAPI GetLocalTime(LPSYSTEMTIME time);

int WINAPI lstrcmpiA(LPCSTR left, LPCSTR right);

// ---- GDI: bitmaps and palettes -----------------------------------------------------------------

/// @endcond

/// Describes a picture for PRaster and the codec.
struct BITMAPINFOHEADER {
  DWORD biSize;          ///< 40.
  LONG biWidth;          ///< In pixels.
  LONG biHeight;         ///< In pixels; positive, as the bottom row comes first.
  WORD biPlanes;         ///< 1.
  WORD biBitCount;       ///< Bits per pixel: 1, 8 or 24.
  DWORD biCompression;   ///< 0: none.
  DWORD biSizeImage;     ///< Bytes of all rows, or 0.
  LONG biXPelsPerMeter;  ///< Resolution in dots per metre, 0 if unknown.
  LONG biYPelsPerMeter;  ///< Likewise.
  DWORD biClrUsed;       ///< Number of palette colours in use, 0 for all or none.
  DWORD biClrImportant;  ///< Not used.
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

/// A colour of a palette.
struct RGBQUAD {
  BYTE rgbBlue;      ///< Blue, 0 to 255 like the others.
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

// palPalEntry actually has palNumEntries elements.
struct LOGPALETTE {
  WORD palVersion;  // 0x300
  WORD palNumEntries;
  PALETTEENTRY palPalEntry[1];
};

HPALETTE WINAPI CreatePalette(const LOGPALETTE* palette);
UINT WINAPI GetPaletteEntries(HPALETTE palette, UINT start, UINT count, LPPALETTEENTRY entries);
/// @endcond

/// Frees a palette. FALSE for null.
BOOL WINAPI DeleteObject(HGDIOBJ object);

// ---- Language ----------------------------------------------------------------------------------

/// @{
/// The language of the calling thread's texts, as a Windows language id of any region. It overrides
/// the environment, starting with the next call of the library. 0, the initial value, leaves the
/// choice to the environment. SetThreadUILanguage returns its argument.
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
inline constexpr int ERROR_INVALID_FUNCTION = 1;
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
inline constexpr int ERROR_UNRECOGNIZED_VOLUME = 1005;
inline constexpr int ERROR_IO_DEVICE = 1117;
inline constexpr int ERROR_CANCELLED = 1223;
inline constexpr int ERROR_CANT_RESOLVE_FILENAME = 1921;

// The reason why the last call on this thread failed.
DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD error);
/// @endcond

#pragma GCC visibility pop
