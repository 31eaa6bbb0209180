// A line on standard error, which nobody can answer but with OK.
#include <system_message.h>

#include <cstdio>

namespace exifkeep {

int showSystemMessage(HWND, const char* text, UINT) noexcept {
  std::fprintf(stderr, "%s\n", text);
  return IDOK;
}

}  // namespace exifkeep
