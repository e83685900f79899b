#include "CorvidKitCore/PropertyListValue.h"
#include "Platform/Linux/Settings/PropertyListDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Treats the bytes as a settings file: settings that can be read can be changed, written, and read back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using platform::linux::PropertyListDocument;
    auto document = PropertyListDocument::parse({reinterpret_cast<const char*>(bytes), size});
    if (!document) {
        return 0;
    }
    for (const std::string_view key : {"enabled", "rules", "updateReminderVersion", "updateReminderSince"}) {
        static_cast<void>(document->value(key));
    }
    document->set(corvid::PropertyListValue::Dictionary{{"org.example.Editor", "maximize"}}, "rules");
    const auto again = PropertyListDocument::parse(document->xml());
    if (!again || again->value("rules") != document->value("rules")) {
        std::abort();
    }
    return 0;
}
