#pragma once

#include "Platform/Linux/Control/Session.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Requests/ControlRequests.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/// A handler that records its requests, and returns the configured replies.
class RecordedRequests final : public platform::ControlRequests {
public:
    explicit RecordedRequests(std::function<void()> end)
        : end(std::move(end)) {}

    platform::ControlAnswer<void> open() override { return answer("open"); }
    platform::ControlAnswer<platform::ControlStatus> status() override;
    void perform(std::string_view action, Answered answered) override;
    platform::ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) override;
    platform::ControlAnswer<void> setBorrowsShortcuts(bool borrows) override {
        return answer(borrows ? "take shortcuts" : "give back shortcuts");
    }
    platform::ControlAnswer<void> quit() override;

    std::vector<std::string> asked;
    platform::ControlStatus report;
    /// The reply of `perform` to an action; empty: it succeeds.
    std::map<std::string, platform::ControlRefusal, std::less<>> refusals;
    /// Runs the reply of `perform`, at once or later; empty: at once.
    std::function<void(std::function<void()>)> delay;

private:
    platform::ControlAnswer<void> answer(std::string line);

    std::function<void()> end;
};

/// A program that answers requests, on a thread of its own with a loop of its own, until a quit request or its
/// destruction.
class ControlServer {
public:
    using Setup = std::function<void(RecordedRequests&)>;

    /// `serve` offers the requests and then runs the loop (with the given function); it runs on the server's thread.
    using Serve = std::function<void(platform::linux::MainLoop&, RecordedRequests&, const std::function<void()>& run)>;

    /// Returns when the server is about to run its loop.
    ControlServer(const Serve& serve, const Setup& setup);

    /// On the socket of a session.
    explicit ControlServer(const platform::linux::Session& session, const Setup& setup = [](RecordedRequests&) {});

    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    ~ControlServer();

    /// Ends the server. Returns the requests that it got.
    [[nodiscard]] std::vector<std::string> asked();

private:
    void end();

    /// Readable when the server must end.
    platform::linux::FileDescriptor ending;
    std::vector<std::string> record;
    std::thread thread;
};

/// Asks to perform an action and waits for the answer.
[[nodiscard]] platform::ControlAnswer<void> perform(platform::ControlRequests&& program, std::string_view action);

/// A session that no other test and no other run of this one has, in a runtime folder of this process.
[[nodiscard]] platform::linux::Session uniqueSession(const std::string& name);
