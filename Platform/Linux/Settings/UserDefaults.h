#pragma once

#include "CorvidKitCore/PreferenceStore.h"
#include "Platform/Linux/Log.h"
#include "Platform/Linux/Settings/PropertyListDocument.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform::linux {

/// The user's settings: an XML property list, `tessel/preferences.plist` in the configuration folder.
///
/// The file is read once, here; edits made to it while the program runs are lost at the next write. Every write
/// replaces it whole and durably, with mode 0600, before `set` returns. A symbolic link stays one: the file that it
/// leads to is replaced. Entries of kinds that the program does not know read as absent and stay in the file.
///
/// Nothing here stops the program. A file that cannot be read, is malformed or holds no dictionary is kept beside as
/// `preferences.plist.unreadable-<time>`, and the settings start from their defaults. When a write fails, the change
/// holds in memory, a line goes to the log, and the next write tries again with all changes. One thread at a time.
class UserDefaults final : public corvid::PreferenceStore {
public:
    /// `path` is absolute; without one (no home folder) the settings live in memory only.
    explicit UserDefaults(std::optional<std::string> path = standardPath(), Log log = logToStandardError);

    /// The settings file of this user; nothing without a home folder.
    [[nodiscard]] static std::optional<std::string> standardPath();

    [[nodiscard]] std::optional<corvid::PropertyListValue> object(std::string_view key) const override;
    void set(std::optional<corvid::PropertyListValue> value, std::string_view key) override;

private:
    void load();
    void save();
    void keepUnreadable(const std::string& file, const std::string& reason);

    std::optional<std::string> path;
    Log log;
    PropertyListDocument document;
    /// There is a file that could be neither read nor kept beside; it must not be replaced.
    bool unreadableInPlace = false;
    /// The last write failed.
    bool unsaved = false;
};

} // namespace platform::linux
