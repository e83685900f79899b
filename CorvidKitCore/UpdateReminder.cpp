#include "CorvidKitCore/UpdateReminder.h"

namespace corvid {

namespace {

/// The version for which the present period runs.
const Preference<std::optional<std::string>> versionPreference{.key = "updateReminderVersion",
                                                               .defaultValue = std::nullopt};

/// The start of the present period, in seconds since 1970-01-01 00:00 UTC.
const Preference<std::optional<double>> sincePreference{.key = "updateReminderSince", .defaultValue = std::nullopt};

} // namespace

UpdateReminder::UpdateReminder(PreferenceStore& store, const std::string& version, Date now)
    : store(store) {
    const std::optional<std::string> known = store[versionPreference];
    if (known == version) {
        const std::optional<double> start = store[sincePreference];
        if (start && *start <= secondsSince1970(now)) {
            return;
        }
    }
    store[versionPreference] = version;
    store[sincePreference] = secondsSince1970(now);
}

std::optional<Date> UpdateReminder::since() const {
    const std::optional<double> start = store.get()[sincePreference];
    return start.transform(dateOf);
}

void UpdateReminder::restart(Date date) {
    store.get()[sincePreference] = secondsSince1970(date);
}

bool UpdateReminder::isDue(Date date) const {
    const std::optional<double> start = store.get()[sincePreference];
    return start && secondsSince1970(date) - *start >= interval;
}

} // namespace corvid
