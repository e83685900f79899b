#include "CorvidKit/LoginItem.h"

#include "CorvidKit/AppInfo.h"
#include "Platform/Seam/Desktop/LoginItemService.h"
#include "Platform/Seam/Platform.h"

#include <expected>
#include <string>

namespace corvid::LoginItem {

namespace {

void logFailure(const std::string& description) {
    static const Logger logger = AppInfo::logger("login-item");
    logger.error("login item change failed: " + description);
}

} // namespace

bool isEnabled() {
    return platform::current().loginItemService.status() == platform::LoginItemStatus::enabled;
}

bool setEnabled(bool enabled) {
    platform::LoginItemService& service = platform::current().loginItemService;
    const std::expected<void, std::string> change = enabled ? service.registerItem() : service.unregisterItem();
    if (!change) {
        logFailure(change.error());
    }
    return isEnabled();
}

} // namespace corvid::LoginItem
