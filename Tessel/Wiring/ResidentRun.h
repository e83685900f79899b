#pragma once

namespace tessel {

/// Runs the program until it is told to end, and gives its exit status: everything is wired here, and nowhere else.
[[nodiscard]] int runResident();

} // namespace tessel
