// SPDX-License-Identifier: MIT
// The library's application object and module state, which the framework requires.
#include "api/call_frame.h"
#include "info/string_table.h"

namespace exifkeep {

namespace {

// The framework expects one per module; its default behaviour is sufficient.
class ExifkeepApp : public CWinApp {};

[[maybe_unused]] ExifkeepApp app;

}  // namespace

const AFX_MODULE_STATE& moduleState() {
  static constexpr AFX_MODULE_STATE state(&stringTable);
  return state;
}

}  // namespace exifkeep
