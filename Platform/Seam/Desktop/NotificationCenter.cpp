#include "Platform/Seam/Desktop/NotificationCenter.h"

#include <algorithm>
#include <utility>

namespace platform {

NotificationCenter::Token NotificationCenter::addObserver(std::string_view name, Handler handler) {
    const Token token{++lastToken};
    observers.push_back({token, std::string(name), std::move(handler)});
    return token;
}

void NotificationCenter::removeObserver(Token token) {
    std::erase_if(observers, [token](const Observer& observer) { return observer.token == token; });
}

void NotificationCenter::post(const Notification& notification) {
    std::vector<Token> receivers;
    for (const Observer& observer : observers) {
        if (observer.name == notification.name) {
            receivers.push_back(observer.token);
        }
    }
    for (const Token token : receivers) {
        // Looked up again each time, because a handler may remove observers, even its own.
        const auto found = std::ranges::find(observers, token, &Observer::token);
        if (found != observers.end()) {
            const Handler handler = found->handler;
            handler(notification);
        }
    }
}

} // namespace platform
