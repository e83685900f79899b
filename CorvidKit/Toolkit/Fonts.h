#pragma once

namespace corvid::toolkit {

/// Makes the program's own font known. Without it the user's font is taken everywhere.
void loadFonts();

} // namespace corvid::toolkit
