// On POSIX the environment is all there is.
#include <system_language.h>

namespace exifkeep {

std::string systemLanguage() {
  return {};
}

}  // namespace exifkeep
