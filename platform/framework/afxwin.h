// SPDX-License-Identifier: MIT
/// @file
/// Includes the whole framework, and declares the application object, the main window and the
/// message box.
#pragma once

#include <afx.h>
#include <afxcoll.h>
#include <afxstat_.h>
#include <windows.h>

/// The application object. Hosts do not need one.
class EXIFKEEP_PLATFORM_API CWinApp : public CObject {
 public:
  /// Does nothing.
  CWinApp() = default;
};

/// A window of the host.
class EXIFKEEP_PLATFORM_API CWnd : public CObject {
 public:
  /// Does not own the handle.
  explicit CWnd(HWND window = nullptr) : m_hWnd(window) {}
  HWND m_hWnd;  ///< The window's handle.
};

/// The calling thread's main window, or null if the host has not set one.
EXIFKEEP_PLATFORM_API CWnd* AfxGetMainWnd();

/// The framework's own prompts.
inline constexpr UINT AFX_IDP_FAILED_TO_SAVE_DOC = 0xF102;

/// @{
/// Shows a text to the user with the host's handler, or else as one line on standard error (on
/// Windows, in a message box). The text is the framework's for the framework's own ids, otherwise
/// the current module's.
EXIFKEEP_PLATFORM_API int AfxMessageBox(UINT id, UINT type = MB_OK,
                                        UINT help = static_cast<UINT>(-1));
EXIFKEEP_PLATFORM_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT help = 0);
/// @}

// ---- Additions for hosts -----------------------------------------------------------------------

/// Sets the calling thread's main window, or none if it is null. The host still owns the window.
EXIFKEEP_PLATFORM_API void AfxSetMainWnd(CWnd* window);

/// The host's message box. `context` is the pointer given to AfxSetMessageBoxHandler, and `type`
/// the buttons to show, such as MB_OK. Returns the button pressed, such as IDOK. Must not throw.
using AfxMessageBoxHandler = int (*)(void* context, const char* text, UINT type);

/// Installs a handler for all threads of the process, or removes it if null. Any thread may call
/// this. The handler is called on the thread that shows the message; in the library, that is a save
/// to a file whose extension names no format. `context` is passed to the handler.
EXIFKEEP_PLATFORM_API void AfxSetMessageBoxHandler(AfxMessageBoxHandler handler, void* context);
