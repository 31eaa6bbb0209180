// SPDX-License-Identifier: MIT
#include "answers.h"

#include "escape.h"
#include "standard_streams.h"
#include "system.h"

namespace program {

void printAnswer(std::string_view path, std::string_view answer, Style style) {
  print(escapeForTerminal(path) + ": " + styled(style, escapeForTerminal(answer)) + '\n');
}

FileRefusal explainRefusal(const std::string& path) {
  std::string problem = whyNotReadable(path);
  if (problem.empty()) return {ExitStatus::notExif, "not an Exif file", "not-exif"};
  return {ExitStatus::failed, std::move(problem), isThere(path) ? "unreadable" : "missing"};
}

ExitStatus answerNotExif(const std::string& path) {
  const FileRefusal refusal = explainRefusal(path);
  if (refusal.status == ExitStatus::failed)
    complainAbout(path, refusal.reason);
  else
    printAnswer(path, refusal.reason, Style::missing);
  return refusal.status;
}

bool canBeOpened(const std::string& path) {
  const std::string problem = whyNotReadable(path);
  if (!problem.empty()) complainAbout(path, problem);
  return problem.empty();
}

}  // namespace program
