#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace corvid {

/// Ends a subscription when it is dropped, at once and also in the middle of an emission. May outlive its publisher.
class Subscription {
public:
    Subscription() = default;

    explicit Subscription(std::move_only_function<void()> end)
        : end(std::move(end)) {}

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    Subscription(Subscription&& other) noexcept
        : end(std::exchange(other.end, nullptr)) {}

    Subscription& operator=(Subscription&& other) noexcept {
        const Subscription ended(std::exchange(end, std::exchange(other.end, nullptr)));
        return *this;
    }

    ~Subscription() {
        if (end) {
            end();
        }
    }

private:
    std::move_only_function<void()> end;
};

/// Notifies subscribers of an event, in the order of their subscription. Main thread only.
template <typename... Values>
class Publisher {
public:
    using Handler = std::function<void(const Values&...)>;

    Publisher() = default;
    Publisher(const Publisher&) = delete;
    Publisher& operator=(const Publisher&) = delete;
    ~Publisher() = default;

    /// Calls `handler` at every emission from the next one on, until the subscription is dropped. The handler may
    /// subscribe and drop subscriptions, its own included.
    [[nodiscard]] Subscription subscribe(Handler handler) {
        const std::uint64_t number = ++lastNumber;
        subscribers->push_back({number, std::make_shared<Handler>(std::move(handler))});
        return Subscription([number, list = std::weak_ptr(subscribers)] {
            if (const auto alive = list.lock()) {
                std::erase_if(*alive, [number](const Subscriber& subscriber) { return subscriber.number == number; });
            }
        });
    }

    void send(const Values&... values) {
        // Held: a handler may drop the publisher.
        const std::shared_ptr<List> list = subscribers;
        std::vector<std::uint64_t> receivers;
        for (const Subscriber& subscriber : *list) {
            receivers.push_back(subscriber.number);
        }
        for (const std::uint64_t number : receivers) {
            // Looked up each time: a handler may end subscriptions, its own included.
            const auto found = std::ranges::find(*list, number, &Subscriber::number);
            if (found != list->end()) {
                const auto handler = found->handler;
                (*handler)(values...);
            }
        }
    }

private:
    struct Subscriber {
        std::uint64_t number;
        std::shared_ptr<Handler> handler;
    };

    using List = std::vector<Subscriber>;

    std::shared_ptr<List> subscribers = std::make_shared<List>();
    std::uint64_t lastNumber = 0;
};

} // namespace corvid
