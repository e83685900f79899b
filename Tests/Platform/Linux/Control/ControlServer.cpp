#include "Tests/Platform/Linux/Control/ControlServer.h"

#include "Platform/Linux/Control/ControlSocket.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/eventfd.h>
#include <unistd.h>

#include <future>
#include <utility>

using platform::ControlAnswer;
using platform::ControlStatus;

ControlAnswer<void> RecordedRequests::answer(std::string line) {
    asked.push_back(std::move(line));
    return {};
}

ControlAnswer<ControlStatus> RecordedRequests::status() {
    asked.emplace_back("status");
    return report;
}

void RecordedRequests::perform(std::string_view action, Answered answered) {
    asked.push_back("perform " + std::string(action));
    const auto refusal = refusals.find(action);
    const auto reply = [answered = std::move(answered),
                        result = refusal == refusals.end() ? ControlAnswer<void>() : std::unexpected(refusal->second)] {
        answered(result);
    };
    if (delay) {
        delay(reply);
    } else {
        reply();
    }
}

ControlAnswer<void> RecordedRequests::setRule(std::string_view bundleIdentifier, std::string_view action) {
    return answer("rule " + std::string(bundleIdentifier) + " " + std::string(action));
}

ControlAnswer<void> RecordedRequests::quit() {
    end();
    return answer("quit");
}

ControlServer::ControlServer(const Serve& serve, const Setup& setup)
    : ending(::eventfd(0, EFD_CLOEXEC)) {
    std::promise<void> ready;
    thread = std::thread([this, &serve, &setup, &ready] {
        // Copied: the constructor's arguments are gone while the loop runs.
        const Serve serving = serve;
        platform::linux::MainLoop loop;
        RecordedRequests requests([&loop] { loop.end(0); });
        const auto watch = loop.watch(ending.get(), [] { return false; }, [&loop] { loop.end(0); });
        setup(requests);
        serving(loop, requests, [&loop, &ready] {
            loop.post([&ready] { ready.set_value(); });
            EXPECT_EQ(loop.run(), 0);
        });
        record = requests.asked;
    });
    ready.get_future().wait();
}

ControlServer::ControlServer(const platform::linux::Session& session, const Setup& setup)
    : ControlServer(
          [session](platform::linux::MainLoop& loop, RecordedRequests& requests, const std::function<void()>& run) {
              auto instance = platform::linux::SingleInstance::acquire(session);
              ASSERT_TRUE(instance);
              platform::linux::ControlSocket socket(loop, *instance);
              socket.serve(requests);
              run();
          },
          setup) {
}

ControlServer::~ControlServer() {
    end();
}

std::vector<std::string> ControlServer::asked() {
    end();
    return record;
}

void ControlServer::end() {
    if (thread.joinable()) {
        EXPECT_EQ(::eventfd_write(ending.get(), 1), 0);
        thread.join();
    }
}

ControlAnswer<void> perform(platform::ControlRequests&& program, std::string_view action) {
    ControlAnswer<void> answer;
    program.perform(action, [&answer](const ControlAnswer<void>& given) { answer = given; });
    return answer;
}

platform::linux::Session uniqueSession(const std::string& name) {
    static const TemporaryFolder runtime;
    return {.display = name + "." + std::to_string(getpid()), .runtimeFolder = runtime.path};
}
