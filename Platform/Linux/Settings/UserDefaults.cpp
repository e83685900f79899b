#include "Platform/Linux/Settings/UserDefaults.h"

#include "Platform/Linux/Settings/ConfigurationFolder.h"
#include "Platform/Linux/Settings/DurableFile.h"

#include <expected>
#include <utility>

namespace platform::linux {

UserDefaults::UserDefaults(std::optional<std::string> path, Log log)
    : path{std::move(path)}
    , log{std::move(log)} {
    load();
}

std::optional<std::string> UserDefaults::standardPath() {
    const std::optional<std::string> folder = configurationFolder();
    return folder ? std::optional{*folder + "/tessel/preferences.plist"} : std::nullopt;
}

std::optional<corvid::PropertyListValue> UserDefaults::object(std::string_view key) const {
    return document.value(key);
}

void UserDefaults::set(std::optional<corvid::PropertyListValue> value, std::string_view key) {
    if (value) {
        document.set(*value, key);
    } else if (document.contains(key)) {
        document.remove(key);
    } else if (!unsaved) {
        return;
    }
    save();
}

void UserDefaults::load() {
    if (!path) {
        log("settings: there is no home folder; changes hold until the program ends");
        return;
    }
    const std::expected<std::string, std::string> file = DurableFile::followLinks(*path);
    if (!file) {
        log("settings: " + file.error() + "; starting from the defaults");
        return;
    }
    const auto contents = DurableFile::read(*file);
    if (!contents) {
        if (contents.error().kind == DurableFile::ReadFailure::Kind::notAFile) {
            log("settings: " + contents.error().reason + "; starting from the defaults");
            return;
        }
        keepUnreadable(*file, contents.error().reason);
        return;
    }
    if (!*contents) {
        return;
    }
    if (std::optional<PropertyListDocument> parsed = PropertyListDocument::parse(**contents)) {
        document = *std::move(parsed);
    } else {
        keepUnreadable(*file, *file + " is not a property list with a dictionary");
    }
}

void UserDefaults::keepUnreadable(const std::string& file, const std::string& reason) {
    const auto kept = DurableFile::keepBeside(file);
    unreadableInPlace = !kept;
    const std::string whereabouts = kept ? "kept as " + kept->value_or("nothing") : kept.error();
    log("settings: " + reason + "; " + whereabouts + "; starting from the defaults");
}

void UserDefaults::save() {
    if (!path) {
        return;
    }
    std::expected<void, std::string> saved;
    const std::expected<std::string, std::string> file = DurableFile::followLinks(*path);
    if (!file) {
        saved = std::unexpected(file.error());
    } else if (unreadableInPlace) {
        const auto kept = DurableFile::keepBeside(*file);
        unreadableInPlace = !kept;
        if (!kept) {
            saved = std::unexpected(kept.error());
        }
    }
    if (saved) {
        saved = DurableFile::replace(*file, document.xml());
    }
    unsaved = !saved;
    if (!saved) {
        log("settings: " + saved.error() + "; the change holds until the program ends, the next one tries again");
    }
}

} // namespace platform::linux
