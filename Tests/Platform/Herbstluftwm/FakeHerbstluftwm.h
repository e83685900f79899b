#pragma once

#include "Tests/Platform/X11/TestClient.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/// A peer that executes commands like herbstluftwm, or does not, on a thread and a connection of its own.
class FakeHerbstluftwm {
public:
    struct Reply {
        std::string output;
        std::uint32_t status = 0;
    };

    explicit FakeHerbstluftwm(const std::string& display);
    FakeHerbstluftwm(const FakeHerbstluftwm&) = delete;
    FakeHerbstluftwm& operator=(const FakeHerbstluftwm&) = delete;
    ~FakeHerbstluftwm();

    /// The replies to the next commands; without any left, it is silent.
    void prepare(std::vector<Reply> next);

    /// The commands since the last call, their words with spaces between.
    [[nodiscard]] std::vector<std::string> takeCommands();

private:
    void serve();
    void execute(xcb_window_t window);

    platform::x11::TestClient client;
    std::mutex mutex;
    std::vector<Reply> replies;
    std::vector<std::string> commands;
    std::atomic<bool> isEnding = false;
    std::thread thread;
};
