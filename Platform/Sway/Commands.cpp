#include "Platform/Sway/Commands.h"

#include "Platform/I3Ipc/Commands.h"

namespace platform::sway {

namespace {

bool isPlain(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == ' ';
}

/// A character of UTF-8 is one byte or more; a dot matches any of these bytes if the expression is for bytes, and the
/// whole character if it is for characters.
bool continuesCharacter(char character) {
    return (static_cast<unsigned char>(character) & 0xc0U) == 0x80U;
}

} // namespace

std::string placingCommands(const compositor::WindowIdentifier& window, const corvid::CGRect& frame,
                            const std::string& hiddenWorkspace) {
    std::string commands = "[con_id=" + window + "] " + i3ipc::placingCommands(frame);
    // A name that cannot be quoted cannot be sent either.
    if (!hiddenWorkspace.empty() && hiddenWorkspace.find_first_of("\"\\\n") == std::string::npos) {
        commands += ", move container to workspace \"" + hiddenWorkspace + "\"";
    }
    return commands;
}

std::string popoverCommands(corvid::CGPoint topLeft) {
    return "floating enable, border none, sticky enable, " + i3ipc::movingCommand(topLeft);
}

std::string ownWindowCriteria(ProcessIdentifier process, const std::string& title) {
    std::string expression;
    for (const char character : title) {
        if (isPlain(character)) {
            expression += character;
        } else if (!continuesCharacter(character)) {
            expression += ".+";
        }
    }
    return "[pid=" + std::to_string(process) + " title=\"^" + expression + "$\"]";
}

} // namespace platform::sway
