#pragma once

#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <sys/types.h>

#include <string>

/// A private message bus, at the same address whenever it runs.
class MessageBus {
public:
    /// Does not run yet.
    MessageBus();
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;
    ~MessageBus();

    /// Starts it, and returns when clients can connect.
    void start();
    void stop();

    /// Makes the bus offer a service of that name for activation. Before `start`.
    void offerToStart(const std::string& name) const;

    [[nodiscard]] std::string address() const { return "unix:path=" + folder / "bus"; }

    TemporaryFolder folder;

private:
    pid_t process = 0;
};
