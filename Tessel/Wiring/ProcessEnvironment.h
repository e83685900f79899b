#pragma once

namespace tessel {

// Call at most one of these, before anything else starts. Nothing writes the environment afterwards, because other
// threads, which Qt starts, may read it.

/// Removes the variables from this process's environment that would make the toolkit behave as if it were a program of
/// its own. Started programs get this program's original environment (see `startProgram`).
void settleEnvironment();

/// Removes the variables from this process's environment that would make pictures differ from user to user: the
/// location of the desktop, the user's settings for fonts, and settings for Qt; and sets the size of a point for Qt.
/// The language stays, and so do the folders of Qt itself and of the user's fonts.
void settleEnvironmentForPictures(int pixelsPerPoint);

} // namespace tessel
