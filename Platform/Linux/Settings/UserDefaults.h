#pragma once

#include "CorvidKitCore/PreferenceStore.h"
#include "Platform/Linux/Log/Log.h"
#include "Platform/Linux/Settings/PropertyListDocument.h"

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The user's settings: an XML property list, `tessel/preferences.plist` in the configuration folder.
///
/// The file is read here, and again at each write, which applies only the changes made here: changes by another session
/// or with an editor stay. (If the file is gone, all known settings are written.) Every write replaces the file whole
/// and durably, with mode 0600, before `set` returns, or `together` does. A symbolic link stays one: its target is
/// replaced. Entries of kinds that the program does not know read as absent and stay in the file.
///
/// Nothing here stops the program. A file that cannot be read, is malformed or holds no dictionary is renamed to
/// `preferences.plist.unreadable-<time>`, and the settings start from their defaults or, at a write, go on as they are.
/// When a write fails, the change holds in memory, a line goes to the log, and the next write tries again with all
/// changes. One thread at a time.
class UserDefaults final : public corvid::PreferenceStore {
public:
    /// `path` is absolute; without one (no home folder) the settings live in memory only.
    explicit UserDefaults(std::optional<std::string> path = standardPath(), Log log = logToStandardError);

    /// The settings file of this user; nothing without a home folder.
    [[nodiscard]] static std::optional<std::string> standardPath();

    [[nodiscard]] std::optional<corvid::PropertyListValue> object(std::string_view key) const override;
    void set(std::optional<corvid::PropertyListValue> value, std::string_view key) override;
    void change(const corvid::PropertyListValue& from, corvid::PropertyListValue to, std::string_view key) override;
    void together(const std::function<void()>& changes) override;

private:
    /// A change of the value under a key or, if there is an entry, of that entry in the dictionary under the key.
    /// Without a value, it is removed.
    struct Edit {
        std::string key;
        std::optional<std::string> entry;
        std::optional<corvid::PropertyListValue> value;

        void apply(PropertyListDocument& target) const;
    };

    void load();
    void startFromDefaults(const std::string& file, const std::string& reason);
    void make(Edit edit);
    /// The file's content with the unsaved changes in it. It becomes the document once it is written.
    [[nodiscard]] std::expected<PropertyListDocument, std::string> renewed(const std::string& file);
    void save();
    [[nodiscard]] std::expected<void, std::string> keepUnreadable(const std::string& file, const std::string& reason,
                                                                  std::string_view consequence);

    std::optional<std::string> path;
    Log log;
    PropertyListDocument document;
    /// The changes that the document has and the file has not yet.
    std::vector<Edit> unsaved;
    /// Within `together`, nothing is written.
    bool collects = false;
};

} // namespace platform::linux
