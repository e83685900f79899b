#pragma once

#include "Platform/ControlRequests.h"
#include "Platform/Linux/Applications/FolderWatch.h"
#include "Platform/Linux/Control/SingleInstance.h"
#include "Platform/Linux/MainLoop.h"

#include <chrono>
#include <cstddef>
#include <list>
#include <memory>

namespace platform::linux {

/// Answers the requests on the socket of `SingleInstance`, with or without a message bus: each connection carries the
/// same D-Bus object as the bus does, peer to peer.
///
/// Only processes of the same user are listened to, and none of them is trusted to behave: the number of connections is
/// limited (a new one takes the place of the oldest), a connection carries only so many bytes in its life, and who does
/// not read the answers is cut off. A socket that somebody has removed is made anew. Main thread only.
class ControlSocket {
public:
    static constexpr std::size_t mostConnections = 16;

    /// What a connection may send in its life. A request takes some 200 bytes.
    static constexpr std::size_t mostBytes = std::size_t{64} << 10U;

    /// How long a change in the folder is left to be finished: a file that comes back at once is in the way of whoever
    /// takes the folder away.
    static constexpr Duration settling = std::chrono::milliseconds(250);

    /// How long after a socket was lost its place is looked at again. Nothing tells when a runtime folder is taken away
    /// under a program that has files there, nor when one that comes back becomes the user's.
    static constexpr Duration retry = std::chrono::seconds(10);

    /// Both must outlive this. Who connects waits until `serve`. The connections close when this is dropped, which is
    /// how a client learns that the program has ended.
    ControlSocket(MainLoop& mainLoop, SingleInstance& instance);
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;
    ~ControlSocket();

    /// Answers from now on. Nothing is asked of `answering` but by the running loop.
    void serve(ControlRequests& answering);

private:
    class Peer;

    void listen();
    void accept();
    void tidy();
    /// Sees to it that who looks for the socket finds it.
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
