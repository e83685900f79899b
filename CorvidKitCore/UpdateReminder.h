#pragma once

#include "CorvidKitCore/Date.h"
#include "CorvidKitCore/PreferenceStore.h"

#include <functional>
#include <optional>
#include <string>

namespace corvid {

/// Reports when a version has been in use for so long that the user must be reminded to check for a newer one. The
/// period is stored; there is no other state. Used from the thread that uses the store.
class UpdateReminder {
public:
    /// Thirty days of 86,400 seconds, independent of the calendar.
    static constexpr double interval = 2'592'000;

    /// Starts a new period if another version runs than the stored one, or if the stored start is missing or in the
    /// future: a clock that was set back must not postpone the reminder for good. `store` must outlive the reminder.
    UpdateReminder(PreferenceStore& store, const std::string& version, Date now);

    /// The start of the present period; empty if none is stored.
    [[nodiscard]] std::optional<Date> since() const;

    /// Starts the period again, for the same version.
    void restart(Date date);

    /// Whether the period that is stored has lasted for the interval.
    [[nodiscard]] bool isDue(Date date) const;

private:
    std::reference_wrapper<PreferenceStore> store;
};

} // namespace corvid
