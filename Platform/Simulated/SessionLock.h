#pragma once

#include "Platform/Seam/Desktop/SessionLock.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform::simulated {

/// A session that the test locks.
class SessionLock final : public platform::SessionLock {
public:
    [[nodiscard]] std::unique_ptr<LockWatch> watch(std::function<void()> locked) override {
        return std::make_unique<Watch>(*this, std::move(locked));
    }

    /// Notifies every present subscriber.
    void lock() const {
        const std::vector<Watch*> present = watches;
        for (Watch* each : present) {
            // It may destroy the subscription, and itself with it.
            const std::function<void()> locked = each->locked;
            locked();
        }
    }

    [[nodiscard]] bool isWatched() const { return !watches.empty(); }

private:
    struct Watch final : LockWatch {
        Watch(SessionLock& lock, std::function<void()> locked)
            : lock(lock)
            , locked(std::move(locked)) {
            lock.watches.push_back(this);
        }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch() override { std::erase(lock.watches, this); }

        SessionLock& lock;
        std::function<void()> locked;
    };

    std::vector<Watch*> watches;
};

} // namespace platform::simulated
