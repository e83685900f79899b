#include "Platform/Linux/Holders/SettingLines.h"

#include <glib.h>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace platform::linux {

namespace {

struct UnreferenceVariant {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};

using OwnedVariant = std::unique_ptr<GVariant, UnreferenceVariant>;

std::string_view takeUntil(std::string_view& text, char end) {
    const std::string_view part = text.substr(0, text.find(end));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

} // namespace

std::vector<std::string> SettingLine::texts() const {
    const OwnedVariant parsed(g_variant_parse(nullptr, value.data(), value.data() + value.size(), nullptr, nullptr));
    std::vector<std::string> found;
    if (parsed && g_variant_is_of_type(parsed.get(), G_VARIANT_TYPE_STRING) != 0) {
        found.emplace_back(g_variant_get_string(parsed.get(), nullptr));
    } else if (parsed && g_variant_is_of_type(parsed.get(), G_VARIANT_TYPE_STRING_ARRAY) != 0) {
        for (std::size_t place = 0; place < g_variant_n_children(parsed.get()); ++place) {
            const OwnedVariant child(g_variant_get_child_value(parsed.get(), place));
            found.emplace_back(g_variant_get_string(child.get(), nullptr));
        }
    }
    return found;
}

std::vector<SettingLine> readSettingLines(std::string_view printed) {
    std::vector<SettingLine> settings;
    while (!printed.empty()) {
        std::string_view line = takeUntil(printed, '\n');
        const std::string_view schema = takeUntil(line, ' ');
        const std::string_view key = takeUntil(line, ' ');
        if (!schema.empty() && !key.empty() && !line.empty()) {
            settings.push_back({.schema = std::string(schema), .key = std::string(key), .value = std::string(line)});
        }
    }
    return settings;
}

} // namespace platform::linux
