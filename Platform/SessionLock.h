#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Being told of the session's locking. Dropping it ends that, also while it tells.
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

    /// Calls `locked`, in a turn of the event loop of its own, when the session is to be locked and when it has been;
    /// that may be twice for one lock. A session that is locked already is not told of. Nothing waits, and where nobody
    /// says anything of locks, nothing is told. Costs something for as long as it lives only, and must not outlive
    /// this.
    [[nodiscard]] virtual std::unique_ptr<LockWatch> watch(std::function<void()> locked) = 0;
};

} // namespace platform
