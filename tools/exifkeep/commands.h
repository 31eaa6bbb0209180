// The program's commands. The file of a command has all of it: options, help text and body.
#pragma once

#include <functional>

#include "answers.h"

namespace CLI {
class App;
}

namespace program {

using Command = std::function<ExitStatus()>;

// Each makes `program` know its command, or its commands. When one is parsed, `chosen` becomes what
// that command does.
void addInfo(CLI::App& program, Command& chosen);
void addAnswers(CLI::App& program, Command& chosen);  // check, version, sound and languages
void addOpen(CLI::App& program, Command& chosen);
void addSave(CLI::App& program, Command& chosen);
void addAudio(CLI::App& program, Command& chosen);

}  // namespace program
