#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// An event, by name, with its data.
struct Notification {
    std::string name;
    std::map<std::string, std::any, std::less<>> userInfo;
};

/// Notifies observers of events: an event bus by name. Main thread only, including delivery.
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    /// Identifies one observer; never reused by the same center.
    struct Token {
        std::uint64_t value = 0;

        friend bool operator==(const Token&, const Token&) = default;
    };

    /// Calls `handler` for every notification of that name, from any sender, until the observer is removed.
    [[nodiscard]] Token addObserver(std::string_view name, Handler handler);

    /// Ends the delivery at once, even of a notification that is being posted. An unknown token is ignored.
    void removeObserver(Token token);

    /// Calls the observers of the notification's name in the order of their registration. An observer added meanwhile
    /// gets the next notification.
    void post(const Notification& notification);

private:
    struct Observer {
        Token token;
        std::string name;
        Handler handler;
    };

    std::vector<Observer> observers;
    std::uint64_t lastToken = 0;
};

} // namespace platform
