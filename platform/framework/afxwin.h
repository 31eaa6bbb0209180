/// @file
/// The framework in one include: objects, strings and lists, module states, and here the
/// application object, the owner window and the message box.
#pragma once

#include <afx.h>
#include <afxcoll.h>
#include <afxstat_.h>
#include <windows.h>

/// The application object. A host needs none here.
class EXIFKEEP_PLATFORM_API CWinApp : public CObject {
 public:
  /// Does nothing.
  CWinApp() = default;
};

/// A window that the host owns.
class EXIFKEEP_PLATFORM_API CWnd : public CObject {
 public:
  /// Of the handle, which stays the host's.
  explicit CWnd(HWND window = nullptr) : m_hWnd(window) {}
  HWND m_hWnd;  ///< The handle that was given.
};

/// The main window of the calling thread, or null when the host has set none.
EXIFKEEP_PLATFORM_API CWnd* AfxGetMainWnd();

/// The framework's own prompts.
inline constexpr UINT AFX_IDP_FAILED_TO_SAVE_DOC = 0xF102;

/// @{
/// Shows a text to the user: through the host's handler, else as one line on standard error. Ids of
/// the framework's own prompts give the framework's text, any other id the current module's.
EXIFKEEP_PLATFORM_API int AfxMessageBox(UINT id, UINT type = MB_OK,
                                        UINT help = static_cast<UINT>(-1));
EXIFKEEP_PLATFORM_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT help = 0);
/// @}

// ---- This stand-in's own additions, for hosts ---------------------------------------------------

/// Sets (or, with null, takes back) the calling thread's main window; the window stays the host's.
EXIFKEEP_PLATFORM_API void AfxSetMainWnd(CWnd* window);

/// The host's message box. `context` is what was installed with it, `type` tells the buttons, such
/// as MB_OK. Answers with the button pressed, such as IDOK; must not throw.
using AfxMessageBoxHandler = int (*)(void* context, const char* text, UINT type);

/// Installs the handler for all threads of the process, null removes it. Any thread may call it.
/// The handler runs on the thread that has something to say: within a call of the library, a save
/// to a file whose extension names no format. `context` is handed to the handler and stays the
/// host's.
EXIFKEEP_PLATFORM_API void AfxSetMessageBoxHandler(AfxMessageBoxHandler handler, void* context);
