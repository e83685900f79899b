#pragma once

namespace tessel {

/// Lets names be sorted and texts be shown in the user's language; numbers stay as programs write them.
void enterLocale();

} // namespace tessel
