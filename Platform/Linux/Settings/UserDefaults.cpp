#include "Platform/Linux/Settings/UserDefaults.h"

#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Settings/DurableFile.h"

#include <expected>
#include <utility>

namespace platform::linux {

namespace {

std::string notAPropertyList(const std::string& file) {
    return file + " is not a property list with a dictionary";
}

} // namespace

UserDefaults::UserDefaults(std::optional<std::string> path, Log log)
    : path{std::move(path)}
    , log{std::move(log)} {
    load();
}

std::optional<std::string> UserDefaults::standardPath() {
    const std::optional<std::string> folder = BaseFolders::ofThisProcess().userConfiguration;
    return folder ? std::optional{*folder + "/tessel/preferences.plist"} : std::nullopt;
}

std::optional<corvid::PropertyListValue> UserDefaults::object(std::string_view key) const {
    return document.value(key);
}

void UserDefaults::set(std::optional<corvid::PropertyListValue> value, std::string_view key) {
    if (value || document.contains(key)) {
        make({.key = std::string(key), .entry = std::nullopt, .value = std::move(value)});
    }
    save();
}

void UserDefaults::change(const corvid::PropertyListValue& from, corvid::PropertyListValue to, std::string_view key) {
    const auto* const former = from.dictionary();
    const auto* const latter = to.dictionary();
    if (former == nullptr || latter == nullptr) {
        set(std::move(to), key);
        return;
    }
    for (const auto& [entry, value] : *latter) {
        const auto found = former->find(entry);
        if (found == former->end() || found->second != value) {
            make({.key = std::string(key), .entry = entry, .value = value});
        }
    }
    for (const auto& [entry, value] : *former) {
        if (!latter->contains(entry)) {
            make({.key = std::string(key), .entry = entry, .value = std::nullopt});
        }
    }
    save();
}

void UserDefaults::together(const std::function<void()>& changes) {
    const bool isPart = std::exchange(collects, true);
    changes();
    collects = isPart;
    save();
}

void UserDefaults::make(Edit edit) {
    edit.apply(document);
    std::erase_if(unsaved, [&edit](const Edit& earlier) {
        return earlier.key == edit.key && (!edit.entry || earlier.entry == edit.entry);
    });
    if (path) {
        unsaved.push_back(std::move(edit));
    }
}

void UserDefaults::Edit::apply(PropertyListDocument& target) const {
    if (!entry) {
        value ? target.set(*value, key) : target.remove(key);
    } else {
        value ? target.setEntry(*value, key, *entry) : target.removeEntry(key, *entry);
    }
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
        startFromDefaults(*file, contents.error().reason);
        return;
    }
    if (!*contents) {
        return;
    }
    if (std::optional<PropertyListDocument> parsed = PropertyListDocument::parse(**contents)) {
        document = *std::move(parsed);
    } else {
        startFromDefaults(*file, notAPropertyList(*file));
    }
}

void UserDefaults::startFromDefaults(const std::string& file, const std::string& reason) {
    constexpr std::string_view consequence = "starting from the defaults";
    if (const auto kept = keepUnreadable(file, reason, consequence); !kept) {
        log("settings: " + reason + "; " + kept.error() + "; " + std::string(consequence));
    }
}

std::expected<void, std::string> UserDefaults::keepUnreadable(const std::string& file, const std::string& reason,
                                                              std::string_view consequence) {
    const auto kept = DurableFile::keepBeside(file);
    if (!kept) {
        return std::unexpected(kept.error());
    }
    log("settings: " + reason + "; kept as " + kept->value_or("nothing") + "; " + std::string(consequence));
    return {};
}

std::expected<PropertyListDocument, std::string> UserDefaults::renewed(const std::string& file) {
    const auto contents = DurableFile::read(file);
    if (!contents && contents.error().kind == DurableFile::ReadFailure::Kind::notAFile) {
        return std::unexpected(contents.error().reason);
    }
    std::optional<PropertyListDocument> next;
    if (contents && *contents) {
        next = PropertyListDocument::parse(**contents);
    }
    if (next) {
        for (const Edit& edit : unsaved) {
            edit.apply(*next);
        }
        return *std::move(next);
    }
    if (!contents || *contents) {
        const std::string reason = contents ? notAPropertyList(file) : contents.error().reason;
        if (const auto kept = keepUnreadable(file, reason, "going on with the settings in force"); !kept) {
            return std::unexpected(kept.error());
        }
    }
    next = PropertyListDocument::parse(document.xml());
    return next ? std::expected<PropertyListDocument, std::string>(*std::move(next))
                : std::unexpected("the settings cannot be written as XML");
}

void UserDefaults::save() {
    if (!path || collects || unsaved.empty()) {
        return;
    }
    std::expected<void, std::string> saved;
    const std::expected<std::string, std::string> file = DurableFile::followLinks(*path);
    if (!file) {
        saved = std::unexpected(file.error());
    } else {
        std::optional<PropertyListDocument> written;
        saved = DurableFile::renew(*file, [&]() -> std::expected<std::string, std::string> {
            std::expected<PropertyListDocument, std::string> next = renewed(*file);
            if (!next) {
                return std::unexpected(next.error());
            }
            return written.emplace(*std::move(next)).xml();
        });
        if (saved) {
            document = *std::move(written);
        }
    }
    if (saved) {
        unsaved.clear();
    } else {
        log("settings: " + saved.error() + "; the change holds until the program ends, the next one tries again");
    }
}

} // namespace platform::linux
