#pragma once

#include "Platform/Linux/Applications/FolderWatch.h"
#include "Platform/Linux/Control/SingleInstance.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Requests/ControlRequests.h"

#include <chrono>
#include <cstddef>
#include <list>
#include <memory>

namespace platform::linux {

/// Answers the requests on the socket of `SingleInstance`, with or without a message bus: each connection carries the
/// same D-Bus object as the bus does, peer to peer.
///
/// Only processes of the same user are accepted, and none of them is trusted: the number of connections is limited (a
/// new one replaces the oldest), a connection has a limit for all its bytes, and a client that does not read its
/// replies is disconnected. A removed socket is created again. Main thread only.
class ControlSocket {
public:
    static constexpr std::size_t mostConnections = 16;

    /// The limit of bytes in a connection's life. A request takes some 200 bytes.
    static constexpr std::size_t mostBytes = std::size_t{64} << 10U;

    /// The pause after a change in the folder: a file that comes back at once would keep the folder from being removed.
    static constexpr Duration settling = std::chrono::milliseconds(250);

    /// The interval at which a lost socket's place is looked at again. No event announces that a runtime folder in use
    /// is removed, nor that a new one becomes the user's.
    static constexpr Duration retry = std::chrono::seconds(10);

    /// Both must outlive this. A client waits until `serve`. The connections close when this is dropped, which is how a
    /// client learns that the program has ended.
    ControlSocket(MainLoop& mainLoop, SingleInstance& instance);
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;
    ~ControlSocket();

    /// Answers from now on. `answering` is only called from the running loop.
    void serve(ControlRequests& answering);

private:
    class Peer;

    void listen();
    void accept();
    void tidy();
    /// Puts the socket back where clients look for it.
    void stayReachable();

    MainLoop& mainLoop;
    SingleInstance& instance;
    ControlRequests* requests = nullptr;
    /// The oldest first.
    std::list<Peer> peers;
    std::unique_ptr<DescriptorWatch> watch;
    /// There while no descriptor is left to take a connection in with.
    std::unique_ptr<ScheduledWork> pause;
    std::unique_ptr<TurnEnd> turnEnd;
    std::unique_ptr<FolderWatch> folder;
    std::unique_ptr<ScheduledWork> lookingAgain;
    bool wasInFolder = false;
    bool isLost = false;
};

} // namespace platform::linux
