#pragma once

#include <string>

/// Pictures of the interface with made-up but realistic content. Main thread only.
namespace tessel::MenuSnapshot {

/// Draws both tabs in both colour schemes into files in that directory. The user's settings are neither read nor
/// written; what cannot be drawn or written is left out, silently.
void render(const std::string& directory);

} // namespace tessel::MenuSnapshot
