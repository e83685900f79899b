#pragma once

#include <string>

/// Pictures of the interface with sample contents. Main thread only.
namespace tessel::MenuSnapshot {

/// Draws both tabs in both colour schemes into files in that directory. The user's settings are neither read nor
/// written; a picture that cannot be drawn or written is left out, silently.
void render(const std::string& directory);

} // namespace tessel::MenuSnapshot
