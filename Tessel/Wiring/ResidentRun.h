#pragma once

namespace tessel {

/// Runs the program until it is ended, and returns its exit status: all wiring is here.
[[nodiscard]] int runResident();

} // namespace tessel
