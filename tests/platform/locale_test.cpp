// SPDX-License-Identifier: MIT
#include <afxwin.h>
#include <code_page.h>
#include <language.h>

#include <clocale>
#include <thread>
#include <vector>

#include "platform/scratch.h"

namespace exifkeep::test {
namespace {

std::string encoded(const std::map<std::string, std::string>& environment, const char* utf8) {
  setLocaleVariables(environment);
  const auto encoder = CodePageEncoder::forUser();
  if (!encoder) return utf8;
  std::string text = "old";
  encoder->encode(utf8, text);
  return text;
}

TEST(CodePage, ConvertsToTheLocalesCharset) {
  const std::map<const char*, std::vector<const char*>> cases = {
      {"\xE9??.", {"fr_FR.ISO-8859-1", "fr_FR.iso88591"}},
      {"\xE9?\xA4.", {"de_DE.ISO-8859-15@euro"}},
      {"?\x1B$B4A\x1B(B?.", {"ja_JP.ISO-2022-JP"}},
      {"é漢€.",
       {"fr_FR.UTF-8", "fr_FR.utf8", "fr_FR", "C", "fr_FR@euro", "fr_FR.", "fr_FR.nonsense",
        "fr_FR.UTF-16", "fr_FR.ISO-8859-1//TRANSLIT"}}};
  for (const auto& [expected, locales] : cases)
    for (const char* locale : locales)
      EXPECT_EQ(encoded({{"LC_ALL", locale}}, "é漢€."), expected) << locale;
  EXPECT_EQ(encoded({{"LC_CTYPE", "fr_FR.ISO-8859-1"}, {"LANG", "fr_FR.UTF-8"}}, "é"), "\xE9");
  EXPECT_EQ(encoded({{"LC_ALL", "C"}, {"LC_CTYPE", "fr_FR.ISO-8859-1"}}, "é"), "é");
  const std::string text(1000, 'x');  // longer than the conversion's buffer
  EXPECT_EQ(encoded({{"LANG", "fr_FR.ISO-8859-1"}}, (text + "é\xFF" + text + "\xE6\xBC").c_str()),
            text + "\xE9?" + text + "?");
}

using CommaLocale = ScratchTest;

TEST_F(CommaLocale, ChangesNoNumberInATextOfTheFramework) {
  writeFile(path("comma"),
            "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\nEND LC_NUMERIC\n");
  const std::string make = "localedef -c -f ANSI_X3.4-1968 -i ";
  if (std::system((make + path("comma ") + path("xx") + " >&- 2>&-").c_str()) < 0) FAIL();
  setenv("LOCPATH", path("").c_str(), 1);
  if (!std::setlocale(LC_NUMERIC, "xx")) GTEST_SKIP() << "no localedef";
  CString text;
  text.Format("%.1f", 2.5);
  EXPECT_EQ(text, "2.5");
  std::setlocale(LC_NUMERIC, "C");
}

constexpr std::string_view englishTexts[] = {"", "Maker", "only English"};
constexpr std::string_view germanTexts[] = {"", "Größ!"};
constexpr AfxStringVariant variants[] = {{1031, germanTexts}, {1033, englishTexts}};
constexpr AfxStringTable table{variants}, emptyTable{};
constexpr AFX_MODULE_STATE module(&table), otherModule(&emptyTable);

// The text loaded by LoadString, or "(none)" for FALSE with an empty string.
CString loaded(UINT id) {
  CString text = "old";
  if (text.LoadString(id)) return text;
  return text.IsEmpty() ? CString("(none)") : text;
}

TEST(ModuleState, NestsPerThreadAndReadsTheLanguageOncePerSwitch) {
  setLocaleVariables({{"LANG", "de_DE.ISO-8859-1"}});
  EXPECT_EQ(loaded(1), "(none)");
  const AFX_MAINTAIN_STATE2 outer(&module);
  {
    const AFX_MAINTAIN_STATE2 inner(&otherModule);
    EXPECT_EQ(loaded(1), "(none)");
    std::thread([] { EXPECT_EQ(loaded(1), "(none)"); }).join();
  }
  EXPECT_EQ(loaded(1), "Gr\xF6\xDF!");
  setLocaleVariables({{"LANG", "en_US.UTF-8"}});
  EXPECT_EQ(loaded(1), "Gr\xF6\xDF!");
  // Ids of other languages, unknown ids, and ids of the framework itself.
  for (const UINT id : {0u, 2u, 3u, 0xF102u, ~0u}) EXPECT_EQ(loaded(id), "(none)") << id;
  const AFX_MAINTAIN_STATE2 nextCall(&module);
  EXPECT_EQ(loaded(1), "Maker");
}

// The host's choice takes precedence over the environment, on its own thread.
TEST(Language, IsTheThreadsIfTheHostSelectedOne) {
  setLocaleVariables({{"LANGUAGE", "it"}, {"LANG", "de_DE"}});
  EXPECT_EQ(SetThreadUILanguage(0x0C0C), 0x0C0C);  // Canadian French
  EXPECT_EQ(userLanguage(), 1036);
  std::thread([] { EXPECT_EQ(userLanguage(), 1040); }).join();
  SetThreadUILanguage(0x0419);
  EXPECT_EQ(userLanguage(), 1033);
  SetThreadUILanguage(0);
  EXPECT_EQ(userLanguage(), 1040);
}

int note(void* context, const char* text, UINT) {
  static_cast<std::vector<std::string>*>(context)->push_back(text);
  return 42;
}

TEST(MessageBox, UsesTheHandlerOrElseStandardError) {
  setLocaleVariables({});
  const AFX_MAINTAIN_STATE2 state(&module);
  std::vector<std::string> shown;
  AfxSetMessageBoxHandler(note, &shown);
  EXPECT_EQ(AfxMessageBox(1u), 42);
  EXPECT_EQ(AfxMessageBox("100 %s"), 42);
  AfxSetMessageBoxHandler(nullptr, nullptr);
  EXPECT_EQ(shown, (std::vector<std::string>{"Maker", "100 %s"}));
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(AfxMessageBox(AFX_IDP_FAILED_TO_SAVE_DOC), IDOK);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Failed to save document.\n");
}

}  // namespace
}  // namespace exifkeep::test
