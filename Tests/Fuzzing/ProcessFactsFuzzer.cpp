#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/ProcessFacts.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Treats the bytes as the kernel's data on a process: its control groups, its security label, its command line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace platform::linux;
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto unit = ProcessFacts::applicationOfUnit(text);
    const auto snap = ProcessFacts::snapOfLabel(text);
    const auto words = ProcessFacts::commandWords(text);
    std::size_t length = 0;
    for (const std::string& word : words) {
        length += word.size();
    }
    const auto script = ExecLine::script(words);
    if ((unit && (unit->empty() || unit->size() > size)) ||
        (snap && (snap->instance.empty() || snap->application.empty())) || length > size ||
        (script && script->size() > size)) {
        std::abort();
    }
    return 0;
}
