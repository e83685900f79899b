#pragma once

#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// A simulated peer at a Unix socket of its own. It serves on a thread of its own, because the requester waits for it.
class SocketServer {
public:
    SocketServer(const SocketServer&) = delete;
    SocketServer& operator=(const SocketServer&) = delete;

    [[nodiscard]] std::string path() const { return folder / "server.sock"; }

    /// As if it had crashed; `start` makes it listen again.
    void stop();
    void start();

    /// Sends bytes to every connection with any subscription.
    void sendRaw(std::string_view bytes);

    [[nodiscard]] int connections();

protected:
    struct Peer {
        explicit Peer(int socket)
            : socket(socket) {}

        Peer(const Peer&) = delete;
        Peer& operator=(const Peer&) = delete;
        ~Peer();

        int socket;
        std::string unread;
        bool hasSubscribed = false;
    };

    SocketServer();
    virtual ~SocketServer();

    /// For the constructor and the destructor of the derived class, whose functions the thread calls.
    void beginServing();
    void endServing();

    /// Handles the bytes that have come from a peer; false closes the connection. On the other thread, with the lock.
    virtual bool handle(Peer& peer) = 0;

    static void sendAll(const Peer& peer, std::string_view bytes);

    TemporaryFolder folder;
    /// The handler of requests may set the next event.
    std::recursive_mutex mutex;
    std::vector<std::unique_ptr<Peer>> peers;

private:
    void serve();
    void accept();
    [[nodiscard]] bool read(Peer& peer);
    void wake() const;

    int listening = -1;
    int wakeReading = -1;
    int wakeWriting = -1;
    bool isEnding = false;
    std::thread thread;
};
