// SPDX-License-Identifier: MIT
// The framework's own prompts are in English, not in a module's string table.
#include <afxwin.h>

#include <mutex>

#include "system_message.h"

namespace {

struct InstalledHandler {
  AfxMessageBoxHandler show = nullptr;
  void* context = nullptr;
};

std::mutex handlerMutex;
InstalledHandler installedHandler;

thread_local CWnd* mainWindow = nullptr;

InstalledHandler currentHandler() {
  const std::lock_guard lock(handlerMutex);
  return installedHandler;
}

}  // namespace

CWnd* AfxGetMainWnd() {
  return mainWindow;
}

void AfxSetMainWnd(CWnd* window) {
  mainWindow = window;
}

int AfxMessageBox(UINT id, UINT type, UINT) {
  if (id == AFX_IDP_FAILED_TO_SAVE_DOC) return AfxMessageBox("Failed to save document.", type);
  CString text;
  text.LoadString(id);
  return AfxMessageBox(text, type);
}

// The handler is called without the lock, so that it may block or install another handler.
int AfxMessageBox(LPCSTR text, UINT type, UINT) {
  const InstalledHandler handler = currentHandler();
  if (handler.show) return handler.show(handler.context, text, type);
  return exifkeep::showSystemMessage(mainWindow ? mainWindow->m_hWnd : nullptr, text, type);
}

void AfxSetMessageBoxHandler(AfxMessageBoxHandler handler, void* context) {
  const std::lock_guard lock(handlerMutex);
  installedHandler = {handler, context};
}
