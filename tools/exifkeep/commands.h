// SPDX-License-Identifier: MIT
// The program's commands. Options, help text and body of a command are in the same file.
#pragma once

#include <functional>

#include "answers.h"

namespace CLI {
class App;
}

namespace program {

using Command = std::function<ExitStatus()>;

// Each adds its command or commands to `program`. When a command is parsed, `chosen` is set to it.
void addInfo(CLI::App& program, Command& chosen);
void addAnswers(CLI::App& program, Command& chosen);  // check, version, sound and languages
void addOpen(CLI::App& program, Command& chosen);
void addSave(CLI::App& program, Command& chosen);
void addAudio(CLI::App& program, Command& chosen);

}  // namespace program
