#include "Platform/Linux/Applications/DesktopEntryIdentification.h"

#include "Platform/Linux/Applications/EntryMatching.h"

namespace platform::linux {

std::optional<std::string> DesktopEntryIdentification::bundleIdentifier(const ApplicationClues& clues) {
    const DesktopEntryIndex& index = entries.index();
    std::optional<ProcessFacts::Program> program;
    if (clues.process > 0) {
        if (const auto flatpak = ProcessFacts::flatpakApplication(processFolder, clues.process)) {
            return EntryMatching::byFlatpak(index, *flatpak, clues);
        }
        if (const auto snap = ProcessFacts::snapApplication(processFolder, clues.process)) {
            return EntryMatching::bySnap(index, *snap, clues);
        }
        program = ProcessFacts::program(processFolder, clues.process);
        if (const auto scope = ProcessFacts::scopeApplication(processFolder, clues.process)) {
            if (std::optional<std::string> found = EntryMatching::byScope(index, *scope, program, clues)) {
                return found;
            }
        }
    }
    if (std::optional<std::string> found = EntryMatching::byApplicationId(index, clues.applicationId)) {
        return found;
    }
    if (std::optional<std::string> found =
            EntryMatching::byWindowClass(index, clues.windowClass, clues.windowInstance)) {
        return found;
    }
    return program ? EntryMatching::byProgram(index, *program) : std::nullopt;
}

} // namespace platform::linux
