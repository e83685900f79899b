#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <functional>
#include <string>
#include <vector>

/// A simulated panel: a connection of its own to a message bus, which can be the watcher, and makes the given calls. It
/// lives in the loop of the item under test.
class NotifierPanel {
public:
    NotifierPanel(platform::linux::MainLoop& loop, const std::string& address);
    NotifierPanel(const NotifierPanel&) = delete;
    NotifierPanel& operator=(const NotifierPanel&) = delete;
    ~NotifierPanel();

    /// Becomes the watcher, with or without a host.
    void watch(bool withHost);
    /// Gives up being the watcher, but stays connected.
    void unwatch();
    /// Adds or removes a host.
    void setHost(bool has);

    /// Calls a method of the item. Returns the reply's text, or "error: NAME".
    std::string call(const char* path, const char* interface, const char* method, const char* types = "", ...);

    /// The value of a property as text, or "error: NAME".
    std::string property(const char* path, const char* interface, const char* name);

    /// The registered items, in order.
    std::vector<std::string> registered;
    /// The signals of items, as "NAME arguments".
    std::vector<std::string> signals;
    /// The first registrations are answered with an error.
    int refusals = 0;
    /// Calls get no reply.
    bool isSilent = false;

    /// Runs the loop until the condition holds; false if it does not within some seconds.
    bool until(const std::function<bool()>& condition);

private:
    struct Methods;

    std::string finish(sd_bus_message* call);

    platform::linux::MainLoop& loop;
    platform::linux::OwnedBus bus;
    platform::linux::OwnedSlot object;
    bool hasHost = false;
};
