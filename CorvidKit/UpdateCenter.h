#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/Published.h"
#include "CorvidKitCore/Date.h"
#include "CorvidKitCore/UpdateReminder.h"

#include <functional>
#include <optional>
#include <string>

namespace corvid {

/// Reminds the user, once a version has been in use for thirty days, to look for a newer one on the maker's website:
/// the program never goes online and cannot know. Main thread only.
class UpdateCenter {
public:
    using Clock = std::function<Date()>;

    /// `app` names the program on the website, `version` is the one that runs. `preferences` must outlive the center.
    /// The flag is worked out now and once an hour.
    UpdateCenter(std::string app, const std::string& version, PreferenceStore& preferences, Clock now);
    UpdateCenter(const UpdateCenter&) = delete;
    UpdateCenter& operator=(const UpdateCenter&) = delete;
    ~UpdateCenter() = default;

    /// A center for others to look at: it has this flag, reminds of nothing and stores nothing.
    [[nodiscard]] static UpdateCenter preview(std::string app, bool updateReminderDue);

    /// Whether the reminder must be shown.
    [[nodiscard]] bool updateReminderDue() const { return due.get(); }

    /// The same for observers: the present value at subscription, then each new one before it is taken.
    [[nodiscard]] Published<bool>& updateReminderDueFlag() { return due; }

    /// Computes the flag again.
    void refresh();

    /// Opens the page where newer versions are found, and reminds again thirty days from now.
    void checkForUpdates();

    /// Reminds again thirty days from now.
    void dismissUpdateReminder();

private:
    UpdateCenter(std::string app, bool updateReminderDue);

    void restart();

    Published<bool> due;
    std::string app;
    std::optional<UpdateReminder> reminder;
    Clock now;
    std::optional<RepeatingTask> refresher;
};

} // namespace corvid
