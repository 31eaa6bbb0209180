// In which language and code page the library answers. It takes both from the environment at every
// call, so the program chooses by setting its own environment.
#pragma once

#include <string>
#include <string_view>

namespace program {

// All texts of the library come as UTF-8 from here on: in the language of `tag` (BCP 47), or in the
// user's own when `tag` is empty.
// REQUIRES: tag is empty or isLanguage(tag).
void selectLanguage(std::string_view tag);

// The tag of the language selected now.
std::string_view selectedLanguage();

bool isLanguage(std::string_view tag);

// The tags of all languages, as a list for people.
std::string languageTags();

}  // namespace program
