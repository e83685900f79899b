#pragma once

#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// A peer that behaves like bspwm, or violates its protocol, on a socket of its own. It answers on a thread of its own,
/// because the requester waits for it.
class FakeBspwm {
public:
    enum class Manners : std::uint8_t {
        good,
        /// It reads requests and never replies.
        silent,
        /// It refuses every request.
        refusing,
        /// It replies with bytes that are no JSON.
        garbled,
        /// It closes each connection without reading.
        closing,
        /// It never stops replying.
        endless,
    };

    FakeBspwm();
    FakeBspwm(const FakeBspwm&) = delete;
    FakeBspwm& operator=(const FakeBspwm&) = delete;
    ~FakeBspwm();

    [[nodiscard]] std::string path() const { return folder / "bspwm.sock"; }

    void behave(Manners newManners);
    /// The replies to `wm -d` and to `query -T -n`.
    void setState(std::string json);
    void setNode(std::string json);

    /// The requests since the last call, their words with spaces between.
    [[nodiscard]] std::vector<std::string> takeRequests();

private:
    void serve();
    void answer(int peer);

    TemporaryFolder folder;
    std::mutex mutex;
    Manners manners = Manners::good;
    std::string state = R"({"monitors":[]})";
    std::string node;
    std::vector<std::string> requests;
    /// Connections that stay without a reply.
    std::vector<int> kept;
    int listening = -1;
    bool isEnding = false;
    std::thread thread;
};
