// SPDX-License-Identifier: MIT
/// @file
/// The languages of the string tables, and which of them the user reads: the one that the host
/// chose for the thread with SetThreadUILanguage, else that of the environment variables of POSIX
/// and GNU gettext (LANGUAGE, LC_ALL, LC_MESSAGES, LANG). The process locale is neither read nor
/// set.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <span>
#include <string_view>

namespace exifkeep {

/// A language of the string tables.
struct LanguageVariant {
  LANGID language;        ///< The Windows language id.
  std::string_view tag;   ///< The BCP 47 tag.
  std::string_view name;  ///< The language's own name for itself, in UTF-8.
};

/// All thirteen variants, in ascending order of language ids.
EXIFKEEP_PLATFORM_API std::span<const LanguageVariant> languageVariants();

/// The variant for a POSIX locale name (de_AT.UTF-8) or BCP 47 tag (zh-Hant-TW), ignoring ASCII
/// case; 0 if it is not one of the thirteen languages.
EXIFKEEP_PLATFORM_API LANGID matchLanguage(std::string_view name);

/// The variant for a Windows language id of any region; 0 if it is not one of the thirteen
/// languages.
EXIFKEEP_PLATFORM_API LANGID matchLanguage(LANGID language);

/// The variant for the calling thread; English if neither the host nor the environment selects one.
EXIFKEEP_PLATFORM_API LANGID userLanguage();

}  // namespace exifkeep
