// What the framework keeps of this library: its application object and its module state.
#include "api/call_frame.h"
#include "info/string_table.h"

namespace exifkeep {

namespace {

// The framework expects one per module; the default behaviour is all that is needed.
class ExifkeepApp : public CWinApp {};

[[maybe_unused]] ExifkeepApp app;

}  // namespace

const AFX_MODULE_STATE& moduleState() {
  static constexpr AFX_MODULE_STATE state(&stringTable);
  return state;
}

}  // namespace exifkeep
