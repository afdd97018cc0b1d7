#pragma once

namespace margindesk {

// Runs the desktop terminal and answers its exit code: 0 fine, 1 something failed, 2 what was asked for
// cannot be used.
int RunDesktop(int argc, char** argv);

}  // namespace margindesk
