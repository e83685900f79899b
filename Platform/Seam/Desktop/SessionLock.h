#pragma once

#include <functional>
#include <memory>

namespace platform {

/// A subscription to the session's locking. Destroying it ends that, even inside its callback.
class LockWatch {
public:
    LockWatch() = default;
    LockWatch(const LockWatch&) = delete;
    LockWatch& operator=(const LockWatch&) = delete;
    virtual ~LockWatch() = default;
};

/// Whether the user's session is being locked. Main thread only.
class SessionLock {
public:
    SessionLock() = default;
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;
    virtual ~SessionLock() = default;

    /// Calls `locked`, in a turn of the event loop of its own, when the session is about to be locked and when it has
    /// been; that may be twice for one lock. A session that is locked already causes no call. Nothing waits; if no
    /// source reports locks, there is no call. It has a cost only while it lives, and must not outlive this.
    [[nodiscard]] virtual std::unique_ptr<LockWatch> watch(std::function<void()> locked) = 0;
};

} // namespace platform
