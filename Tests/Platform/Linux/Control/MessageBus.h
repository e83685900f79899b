#pragma once

#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <sys/types.h>

#include <string>

/// A message bus of a test's own, at the same address whenever it runs.
class MessageBus {
public:
    /// Does not run yet.
    MessageBus();
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;
    ~MessageBus();

    /// Runs it, and returns when it can be connected to.
    void start();
    void stop();

    /// Makes the bus believe that it could start a service of that name. Before `start`.
    void offerToStart(const std::string& name) const;

    [[nodiscard]] std::string address() const { return "unix:path=" + folder / "bus"; }

    TemporaryFolder folder;

private:
    pid_t process = 0;
};
