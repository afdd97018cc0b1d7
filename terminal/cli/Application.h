#pragma once

#include <string>
#include <vector>

#include "terminal/session/Terminal.h"

namespace margindesk {

// Runs one command line (without the program's name) and gives the exit code, see CliError.h. Standard output
// is written only when the command came to its end, unless it streams; a failure is one line on standard
// error.
int RunApplication(const std::vector<std::string>& arguments, TTerminal& terminal);

}  // namespace margindesk
