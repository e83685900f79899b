#pragma once

namespace tessel {

/// Sets the user's language for sorting names and for texts; numbers keep the format of programs.
void enterLocale();

} // namespace tessel
