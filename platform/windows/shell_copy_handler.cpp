// Nothing to install: the shell asks the user itself.
#include <shell_copy_handler.h>

void SetShellCopyHandler(const ShellCopyHandler&) {}
