#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Something that happened, by name, with what is known about it.
struct Notification {
    std::string name;
    std::map<std::string, std::any, std::less<>> userInfo;
};

/// Tells observers what happened: an event bus by name. Main thread only, delivery included.
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    /// Names one observer; never reused by the same center.
    struct Token {
        std::uint64_t value = 0;

        friend bool operator==(const Token&, const Token&) = default;
    };

    /// Calls `handler` for every notification of that name, from any sender, until the observer is removed.
    [[nodiscard]] Token addObserver(std::string_view name, Handler handler);

    /// Ends the delivery at once, also of a notification that is being posted. An unknown token is ignored.
    void removeObserver(Token token);

    /// Calls the observers of the notification's name in the order in which they were added. An observer added
    /// meanwhile waits for the next notification.
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
