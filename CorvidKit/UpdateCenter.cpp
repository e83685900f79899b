#include "CorvidKit/UpdateCenter.h"

#include "CorvidKit/AppInfo.h"
#include "CorvidKit/FatalError.h"
#include "CorvidKitCore/Address.h"
#include "Platform/Seam/Desktop/AddressOpener.h"
#include "Platform/Seam/Desktop/MainBundle.h"
#include "Platform/Seam/Platform.h"

#include <chrono>
#include <utility>

namespace corvid {

namespace {

constexpr platform::Duration refreshInterval = std::chrono::hours(1);

std::string updatesPage(const std::string& app) {
    std::string address =
        platform::current().mainBundle.website + "/updates/?app=" + app + "&version=" + AppInfo::version();
    if (!isAddress(address)) {
        fatalError("not an address: " + address, {.file = "CorvidKit/UpdateCenter", .line = __LINE__});
    }
    return address;
}

} // namespace

UpdateCenter::UpdateCenter(std::string app, const std::string& version, PreferenceStore& preferences, Clock now)
    : due(false)
    , app(std::move(app))
    , reminder(std::in_place, preferences, version, now())
    , now(std::move(now)) {
    refresh();
    // The refresher ends with the center that it belongs to.
    refresher.emplace(refreshInterval, [this] { refresh(); });
}

UpdateCenter::UpdateCenter(std::string app, bool updateReminderDue)
    : due(updateReminderDue)
    , app(std::move(app)) {
}

UpdateCenter UpdateCenter::preview(std::string app, bool updateReminderDue) {
    return {std::move(app), updateReminderDue};
}

void UpdateCenter::refresh() {
    due.set(reminder && reminder->isDue(now()));
}

void UpdateCenter::checkForUpdates() {
    platform::current().addressOpener.open(updatesPage(app));
    restart();
}

void UpdateCenter::dismissUpdateReminder() {
    restart();
}

void UpdateCenter::restart() {
    if (reminder) {
        reminder->restart(now());
    }
    due.set(false);
}

} // namespace corvid
