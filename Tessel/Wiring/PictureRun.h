#pragma once

#include <string>

namespace tessel {

/// Draws the pictures of the interface into that directory. Needs neither a display nor a message bus, changes no
/// settings and prints nothing.
void runPictures(const std::string& directory);

} // namespace tessel
