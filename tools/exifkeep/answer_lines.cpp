// One line a file.
#include "answer_lines.h"

#include "file_refusal.h"
#include "standard_streams.h"
#include "terminal_text.h"

namespace program {

void printAnswer(std::string_view path, std::string_view answer, Style style) {
  print(escapeForTerminal(path) + ": " + styled(style, escapeForTerminal(answer)) + '\n');
}

ExitStatus answerNotExif(const std::string& path) {
  const FileRefusal refusal = explainRefusal(path);
  if (refusal.status == ExitStatus::failed) {
    complainAbout(path, refusal.reason);
  } else {
    printAnswer(path, refusal.reason, Style::missing);
  }
  return refusal.status;
}

}  // namespace program
