#include "Platform/Linux/Localization.h"

#include <libintl.h>

#include <cstddef>
#include <utility>

namespace platform::linux {

namespace {

/// How a catalogue names a message with a context (GNU gettext manual, "Contexts").
std::string identifier(std::string_view table, std::string_view key) {
    std::string result(table);
    result += '\004';
    result += key;
    return result;
}

} // namespace

Localization::Localization(std::string domain, const std::filesystem::path& folder)
    : domain(std::move(domain)) {
    bindtextdomain(this->domain.c_str(), folder.c_str());
    bind_textdomain_codeset(this->domain.c_str(), "UTF-8");
}

std::string Localization::text(std::string_view table, std::string_view key) const {
    const std::string message = identifier(table, key);
    const char* translation = dgettext(domain.c_str(), message.c_str());
    return translation == message.c_str() ? std::string(key) : std::string(translation);
}

std::string Localization::text(std::string_view table, std::string_view key, std::uint64_t count) const {
    const std::string message = identifier(table, key);
    const char* translation = dngettext(domain.c_str(), message.c_str(), message.c_str(), count);
    std::string result = translation == message.c_str() ? std::string(key) : std::string(translation);
    constexpr std::string_view placeholder = "%n";
    if (const std::size_t place = result.find(placeholder); place != std::string::npos) {
        result.replace(place, placeholder.size(), std::to_string(count));
    }
    return result;
}

} // namespace platform::linux
