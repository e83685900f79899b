#pragma once

#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Applications/DesktopEntryIndex.h"
#include "Platform/Linux/Applications/ProcessFacts.h"

#include <optional>
#include <string>
#include <string_view>

/// Finds the desktop entry that fits a clue; each gives the entry's id. Where several fit equally well, an entry that
/// is listed for the user comes first, then one that starts the program itself rather than a part of it, then the
/// earlier folder, then the shorter id, then the alphabet. Letters of ASCII compare without case where that is said.
namespace platform::linux::EntryMatching {

/// An application in a Flatpak sandbox. It may have installed several entries; the window decides between them.
[[nodiscard]] std::optional<std::string> byFlatpak(const DesktopEntryIndex& index, std::string_view application,
                                                   const ApplicationClues& clues);

/// An application in a snap: the entry "INSTANCE_APPLICATION", or one that names the instance.
[[nodiscard]] std::optional<std::string>
bySnap(const DesktopEntryIndex& index, const ProcessFacts::SnapApplication& snap, const ApplicationClues& clues);

/// The application of a systemd unit, if the program or the window fits it as well: a program that is started from a
/// terminal, a file manager or an editor is in that one's unit and must not be taken for it.
[[nodiscard]] std::optional<std::string> byScope(const DesktopEntryIndex& index, std::string_view application,
                                                 const std::optional<ProcessFacts::Program>& program,
                                                 const ApplicationClues& clues);

/// The id that a toolkit puts on the window, which some give as a file name or path: the entry with that id, also
/// without case; then one with that `StartupWMClass`; then the only one whose id ends in a dot and this one ("mousepad"
/// for "org.xfce.mousepad").
[[nodiscard]] std::optional<std::string> byApplicationId(const DesktopEntryIndex& index,
                                                         std::string_view applicationId);

/// `WM_CLASS` against `StartupWMClass` and the ids. The class comes before the instance, which the user can choose on
/// the command line of many programs; except where an entry names the very instance: so do web applications, which
/// share the class of their browser.
[[nodiscard]] std::optional<std::string> byWindowClass(const DesktopEntryIndex& index, std::string_view windowClass,
                                                       std::string_view windowInstance);

/// The program against `Exec` and `TryExec`: the whole path, then the file's name.
[[nodiscard]] std::optional<std::string> byProgram(const DesktopEntryIndex& index,
                                                   const ProcessFacts::Program& program);

} // namespace platform::linux::EntryMatching
