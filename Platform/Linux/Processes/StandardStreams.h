#pragma once

#include <string_view>

namespace platform::linux {

/// Opens /dev/null in the place of each standard stream that is closed. The next descriptor would get its number
/// otherwise, and output would go to the display server or a client of the control socket. To be called before anything
/// else is opened.
void openClosedStandardStreams();

/// Lets this process survive a closed pipe behind its standard output or error. The output is lost then, and the write
/// fails. Child processes end as usual.
void outliveStandardReaders();

/// Writes the text to standard output, all of it. False where it is lost, as on a full disk; the reason is on standard
/// error.
[[nodiscard]] bool printToStandardOutput(std::string_view text);

} // namespace platform::linux
