#include "Tessel/CommandLine.h"

namespace tessel::CommandLine {

namespace {

constexpr const char* help = R"(Usage: tessel [OPTION]

Moves and resizes the focused window from the keyboard. Runs until it is told to end (SIGTERM or SIGINT).

  Ctrl+Alt+Left    left half
  Ctrl+Alt+Right   right half
  Ctrl+Alt+C       center
  Ctrl+Alt+Up      maximize
  Ctrl+Alt+D       almost maximize
  Ctrl+Alt+Down    maximize height

Options:
  --help           show this text
  --version        show the version
)";

} // namespace

Request parse(std::span<const std::string> arguments, const std::string& version) {
    if (arguments.size() < 2) {
        return Run{};
    }
    const std::string& option = arguments[1];
    if (option == "--help") {
        return Print{help};
    }
    if (option == "--version") {
        return Print{"tessel " + version + "\n"};
    }
    return Refuse{"tessel: unknown option " + option + "; see tessel --help\n"};
}

} // namespace tessel::CommandLine
