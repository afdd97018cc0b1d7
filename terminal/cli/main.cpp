#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include <sys/ioctl.h>
#include <unistd.h>

#include "terminal/cli/Application.h"

namespace {

std::optional<std::string> ReadEnvironment(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

// Colours only for a person at a screen that shows them, who has not asked for none.
bool ShowsColours() {
  return ::isatty(STDOUT_FILENO) != 0 && ReadEnvironment("NO_COLOR").value_or("").empty() &&
         ReadEnvironment("TERM").value_or("dumb") != "dumb";
}

std::size_t GetScreenWidth() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace

int main(int argc, char** argv) {
  // A reader that closes its end ("| head") shows as a failed write, which ends the program quietly.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  margindesk::TTerminal terminal{std::cin,         std::cout,      std::cerr,
                                 &ReadEnvironment, ShowsColours(), GetScreenWidth()};
  return margindesk::RunApplication(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc),
                                    terminal);
}
