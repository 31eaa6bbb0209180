// exifkeep languages: the languages that info can list in.
#include <language.h>

#include "commands.h"
#include "standard_streams.h"
#include "text_table.h"

namespace program {
ExitStatus languages() {
  TextTable table;
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants()) {
    table.addRow(variant.tag, variant.name);
  }
  print(table.text());
  return ExitStatus::ok;
}

}  // namespace program
