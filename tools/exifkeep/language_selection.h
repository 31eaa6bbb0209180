// SPDX-License-Identifier: MIT
// Selects the language and code page of the library's texts. The library takes both from the
// environment in each call, so the program sets its own environment.
#pragma once

#include <string>
#include <string_view>

namespace program {

// From now on all texts of the library are in UTF-8 and in the language of `tag` (BCP 47), or in
// the user's own if `tag` is empty. REQUIRES: tag is empty or isLanguage(tag).
void selectLanguage(std::string_view tag);

// The tag of the selected language.
std::string_view selectedLanguage();

bool isLanguage(std::string_view tag);

// The tags of all languages, separated by commas.
std::string languageTags();

}  // namespace program
