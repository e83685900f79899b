#include "CorvidKit/FatalError.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace corvid {

void fatalError(std::string_view message, SourceLocation location) {
    std::string line(location.file);
    line += ":" + std::to_string(location.line) + ": Fatal error: ";
    line += message;
    line += "\n";
    std::fputs(line.c_str(), stderr);
    std::abort();
}

} // namespace corvid
