// SPDX-License-Identifier: MIT
// Only the language is compared, except that Chinese has two variants. These are distinguished by
// script (RFC 5646 "Hant", "Hans") or, without one, by region: Taiwan, Hong Kong and Macao use
// traditional characters.
#include <language.h>

#include <algorithm>
#include <array>
#include <optional>

#include "locale_name.h"
#include "system_language.h"

namespace exifkeep {
namespace {

constexpr LANGID traditionalChinese = 1028;
constexpr LANGID english = 1033;
constexpr LANGID simplifiedChinese = 2052;

constexpr std::array<LanguageVariant, 13> variants{{
    {traditionalChinese, "zh-TW", "繁體中文"},
    {1031, "de", "Deutsch"},
    {english, "en", "English"},
    {1034, "es", "Español"},
    {1035, "fi", "Suomi"},
    {1036, "fr", "Français"},
    {1040, "it", "Italiano"},
    {1041, "ja", "日本語"},
    {1042, "ko", "한국어"},
    {1043, "nl", "Nederlands"},
    {1053, "sv", "Svenska"},
    {simplifiedChinese, "zh-CN", "简体中文"},
    {2070, "pt", "Português"},
}};

static_assert(std::ranges::is_sorted(variants, {}, &LanguageVariant::language));

// Removes the part before the first of `separators` from the front of `list` and returns it.
std::string_view takePart(std::string_view& list, const char* separators) {
  const std::string_view part = list.substr(0, list.find_first_of(separators));
  list.remove_prefix(std::min(list.size(), part.size() + 1));
  return part;
}

bool isSubtag(std::string_view part) {
  return !part.empty() && part.size() <= 8 &&
         std::all_of(part.begin(), part.end(), isAsciiLetterOrDigit);
}

// `subtags` are those after the language. REQUIRES: they are well-formed.
LANGID chineseVariant(std::string_view subtags) {
  LANGID byRegion = simplifiedChinese;
  while (!subtags.empty()) {
    const std::string_view part = takePart(subtags, "-_");
    if (isSameIgnoringCase(part, "Hant")) return traditionalChinese;
    if (isSameIgnoringCase(part, "Hans")) return simplifiedChinese;
    for (const char* region : {"TW", "HK", "MO"})
      if (isSameIgnoringCase(part, region)) byRegion = traditionalChinese;
  }
  return byRegion;
}

bool areSubtags(std::string_view parts) {
  while (!parts.empty())
    if (!isSubtag(takePart(parts, "-_"))) return false;
  return true;
}

bool isCLocale(std::string_view name) {
  return name == "C" || name == "POSIX";
}

// The first entry of a LANGUAGE list that matches a variant.
std::optional<LANGID> firstMatch(std::string_view list) {
  while (!list.empty()) {
    const std::string_view name = takePart(list, ":");
    if (isCLocale(name)) return english;
    if (const LANGID language = matchLanguage(name)) return language;
  }
  return std::nullopt;
}

}  // namespace

std::span<const LanguageVariant> languageVariants() {
  return variants;
}

LANGID matchLanguage(std::string_view name) {
  std::string_view subtags = languageOf(name);
  const std::string_view language = takePart(subtags, "-_");
  if (!areSubtags(subtags)) return 0;
  if (isSameIgnoringCase(language, "zh")) return chineseVariant(subtags);
  for (const LanguageVariant& variant : variants)
    if (isSameIgnoringCase(language, variant.tag)) return variant.language;
  return 0;
}

// The low ten bits are the language, the others the region or script.
LANGID matchLanguage(LANGID language) {
  constexpr LANGID languageBits = 0x3FF;
  const auto isSame = [language](LANGID other) { return ((language ^ other) & languageBits) == 0; };
  if (isSame(simplifiedChinese)) {
    // Taiwan, Hong Kong, Macao, and traditional script without a region.
    for (const LANGID traditional : {0x0404, 0x0C04, 0x1404, 0x7C04})
      if (language == traditional) return traditionalChinese;
    return simplifiedChinese;
  }
  for (const LanguageVariant& variant : variants)
    if (isSame(variant.language)) return variant.language;
  return 0;
}

// The "C" locale means untranslated texts and overrides LANGUAGE, as in GNU gettext.
LANGID userLanguage(const LocaleVariables& variables) {
  if (const LANGID chosen = threadLanguage()) {
    const LANGID language = matchLanguage(chosen);
    return language != 0 ? language : english;
  }
  const std::string_view locale = variables.localeOf(variables.messages);
  if (isCLocale(locale)) return english;
  if (const auto language = firstMatch(variables.language)) return *language;
  const LANGID language = matchLanguage(locale.empty() ? systemLanguage() : locale);
  return language != 0 ? language : english;
}

LANGID userLanguage() {
  return userLanguage(LocaleVariables());
}

}  // namespace exifkeep
