#include "Platform/Linux/Applications/KeyFile.h"

#include "Platform/Linux/Applications/GLibMemory.h"

#include <cstddef>
#include <span>

namespace platform::linux {
namespace {

std::optional<std::string> taken(char* raw) {
    const GLibText text{raw};
    return text ? std::optional<std::string>(text.get()) : std::nullopt;
}

std::vector<std::string> taken(char** raw, std::size_t count) {
    const GLibTexts list{raw};
    if (!list) {
        return {};
    }
    const std::span<char*> parts(list.get(), count);
    return {parts.begin(), parts.end()};
}

} // namespace

KeyFile::KeyFile()
    : file(g_key_file_new()) {
}

std::optional<KeyFile> KeyFile::parse(std::string_view contents) {
    KeyFile parsed;
    // An empty view may have no address at all, which GLib does not take.
    const char* data = contents.empty() ? "" : contents.data();
    if (g_key_file_load_from_data(parsed.file.get(), data, contents.size(), G_KEY_FILE_NONE, nullptr) == FALSE) {
        return std::nullopt;
    }
    return parsed;
}

bool KeyFile::hasGroup(const char* group) const {
    return g_key_file_has_group(file.get(), group) != FALSE;
}

std::optional<std::string> KeyFile::text(const char* group, const char* key) const {
    return taken(g_key_file_get_string(file.get(), group, key, nullptr));
}

std::optional<std::string> KeyFile::localizedText(const char* group, const char* key) const {
    return taken(g_key_file_get_locale_string(file.get(), group, key, nullptr, nullptr));
}

std::optional<bool> KeyFile::flag(const char* group, const char* key) const {
    GError* raw = nullptr;
    const gboolean value = g_key_file_get_boolean(file.get(), group, key, &raw);
    const GLibError error{raw};
    return error ? std::nullopt : std::optional<bool>(value != FALSE);
}

std::optional<int> KeyFile::number(const char* group, const char* key) const {
    GError* raw = nullptr;
    const int value = g_key_file_get_integer(file.get(), group, key, &raw);
    const GLibError error{raw};
    return error ? std::nullopt : std::optional<int>(value);
}

std::vector<std::string> KeyFile::texts(const char* group, const char* key, char separator) const {
    // The separator belongs to the file object; a file has several lists, each with its own.
    g_key_file_set_list_separator(file.get(), separator);
    gsize count = 0;
    char** list = g_key_file_get_string_list(file.get(), group, key, &count, nullptr);
    return taken(list, count);
}

std::vector<std::string> KeyFile::localizedTexts(const char* group, const char* key) const {
    g_key_file_set_list_separator(file.get(), ';');
    gsize count = 0;
    char** list = g_key_file_get_locale_string_list(file.get(), group, key, nullptr, &count, nullptr);
    return taken(list, count);
}

void KeyFile::set(const char* group, const char* key, const std::string& text) {
    g_key_file_set_string(file.get(), group, key, text.c_str());
}

std::string KeyFile::contents() const {
    return taken(g_key_file_to_data(file.get(), nullptr, nullptr)).value_or("");
}

} // namespace platform::linux
