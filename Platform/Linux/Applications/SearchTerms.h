#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The texts in a desktop entry that people look for its application by, beside the name that they see: what kind of
/// application it is, its keywords (both in the user's language and untranslated), the untranslated name and the file
/// name of its program (Desktop Entry Specification, `GenericName`, `Keywords`, `Exec`). An application in Flatpak is
/// started by Flatpak's program, whose name says nothing of it and is left out.
///
/// In no particular order, and some may be there twice. Empty where that is no application's entry. Any thread.
[[nodiscard]] std::vector<std::string> searchTerms(std::string_view contents);

} // namespace platform::linux
