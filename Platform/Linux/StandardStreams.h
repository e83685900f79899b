#pragma once

#include <string_view>

namespace platform::linux {

/// Opens /dev/null in the place of each standard stream that is closed. The next descriptor that is opened would get
/// its number, and what is written to the stream would go to the display, or to whoever asks from outside. To be called
/// before anything else is opened.
void openClosedStandardStreams();

/// Lets this process live on when whoever read its standard output or error has gone: what it writes is lost then, and
/// the write says so. Programs that it starts are ended by that as ever.
void outliveStandardReaders();

/// Writes the text to standard output, all of it. False where it is lost, as on a full disk; standard error has been
/// told why.
[[nodiscard]] bool printToStandardOutput(std::string_view text);

} // namespace platform::linux
