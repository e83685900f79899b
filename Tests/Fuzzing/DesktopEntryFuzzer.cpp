#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/ExecLine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// Treats the bytes as a desktop entry and follows its Exec line to the program; a quoted text must be read back
/// unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace platform::linux;
    const std::string_view contents(reinterpret_cast<const char*>(bytes), size);
    const std::vector<std::string> desktops{"GNOME", "KDE"};
    const auto entry = DesktopEntry::parse(contents, desktops);
    const std::string exec = entry ? entry->exec : std::string(contents);
    if (const auto program = ExecLine::program(exec)) {
        // A word that looks like one of these is not the program's name.
        const bool isSpecial = program->name.empty() || program->name.contains('%') || program->name.contains('=') ||
                               program->name.contains('\0') || program->name.starts_with('-');
        const auto again = ExecLine::program(ExecLine::quoted(program->name));
        if (!isSpecial && again && again->name != program->name) {
            std::abort();
        }
    }
    return 0;
}
