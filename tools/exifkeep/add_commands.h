// The commands, with their options, help texts and examples.
#pragma once

#include <functional>

#include "exit_status.h"

namespace CLI {
class App;
}

namespace program {

using Command = std::function<ExitStatus()>;

// Makes `program` know them. When it parses a command, `chosen` becomes that command.
void addCommands(CLI::App& program, Command& chosen);

}  // namespace program
