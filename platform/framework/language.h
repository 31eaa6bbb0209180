/// @file
/// The languages that string tables are held in, and which of them the user reads: what the host
/// chose for the thread with SetThreadUILanguage, else environment variables as POSIX and GNU
/// gettext define them (LANGUAGE, LC_ALL, LC_MESSAGES, LANG); the process locale is neither read
/// nor set.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <span>
#include <string_view>

namespace exifkeep {

/// A language that texts are held in.
struct LanguageVariant {
  LANGID language;        ///< Its id.
  std::string_view tag;   ///< BCP 47.
  std::string_view name;  ///< In the language itself, UTF-8.
};

/// All thirteen, in ascending order of their language ids.
EXIFKEEP_PLATFORM_API std::span<const LanguageVariant> languageVariants();

/// The variant for a POSIX locale name (de_AT.UTF-8) or BCP 47 tag (zh-Hant-TW), in any ASCII case;
/// 0 when it is none of the thirteen languages.
EXIFKEEP_PLATFORM_API LANGID matchLanguage(std::string_view name);

/// The variant for a Windows language id of any region; 0 when it is none of the thirteen
/// languages.
EXIFKEEP_PLATFORM_API LANGID matchLanguage(LANGID language);

/// The variant for the calling thread; English when neither host nor environment name one.
EXIFKEEP_PLATFORM_API LANGID userLanguage();

}  // namespace exifkeep
