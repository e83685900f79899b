#pragma once

namespace tessel {

/// Takes out of this process's environment what would make pictures differ from user to user: where the desktop is, how
/// the user has set up fonts, and what is said to Qt. The language stays, and so do the folders in which Qt itself and
/// the user's fonts are. To be called before Qt is loaded.
void forgetUserSettings();

} // namespace tessel
