#pragma once

namespace tessel {

// Each is called before anything else is started, at most one of them. Nothing writes the environment afterwards: other
// threads, which come with Qt, may be reading it.

/// Takes out of this process's environment what would make the toolkit behave as if it were a program of its own.
/// Programs that are started get what this one was given (see `startProgram`).
void settleEnvironment();

/// Takes out of this process's environment what would make pictures differ from user to user: where the desktop is, how
/// the user has set up fonts, and what is said to Qt; and tells Qt how large a point is. The language stays, and so do
/// the folders in which Qt itself and the user's fonts are.
void settleEnvironmentForPictures(int pixelsPerPoint);

} // namespace tessel
