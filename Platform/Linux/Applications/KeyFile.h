#pragma once

#include <glib.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// A file of groups with keys (Desktop Entry Specification, Basic format of the file), read and written by GLib. Of the
/// translations of a text it keeps only those into the user's languages. One thread at a time.
///
/// A key that is repeated counts as it stands last. A text that is not UTF-8 reads as absent.
class KeyFile {
public:
    /// A file without groups.
    KeyFile();

    /// Nothing where a line is neither a group, a key with a value, a comment nor empty.
    [[nodiscard]] static std::optional<KeyFile> parse(std::string_view contents);

    [[nodiscard]] bool hasGroup(const char* group) const;
    [[nodiscard]] std::optional<std::string> text(const char* group, const char* key) const;
    /// The text in the user's language (`LC_MESSAGES`, in the order that `LANGUAGE` prefers), or untranslated.
    [[nodiscard]] std::optional<std::string> localizedText(const char* group, const char* key) const;
    [[nodiscard]] std::optional<bool> flag(const char* group, const char* key) const;
    [[nodiscard]] std::optional<int> number(const char* group, const char* key) const;
    /// The parts of a list, split at `separator`; empty where there is none.
    [[nodiscard]] std::vector<std::string> texts(const char* group, const char* key, char separator = ';') const;

    /// The parts of a list in the user's language, chosen as `localizedText` does, or of the untranslated one.
    [[nodiscard]] std::vector<std::string> localizedTexts(const char* group, const char* key) const;

    void set(const char* group, const char* key, const std::string& text);

    /// The file's contents.
    [[nodiscard]] std::string contents() const;

private:
    struct Unreference {
        void operator()(GKeyFile* raw) const { g_key_file_unref(raw); }
    };

    std::unique_ptr<GKeyFile, Unreference> file;
};

} // namespace platform::linux
