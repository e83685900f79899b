#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/ControlMessages.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Tests/Platform/Linux/Control/ControlServer.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

using Kind = ControlRefusal::Kind;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

ControlAnswer<void> quit(const Session& session) {
    return ControlClient::ofSession(session).quit();
}

TEST(ControlSocket, HandsEveryRequestOnWithItsArguments) {
    const Session session = uniqueSession("requests");
    ControlServer server(session);
    EXPECT_TRUE(ControlClient::ofSession(session).open());
    EXPECT_TRUE(perform(ControlClient::ofSession(session), "leftHalf"));
    EXPECT_TRUE(ControlClient::ofSession(session).setRule("org.example.Übung", "none"));
    EXPECT_TRUE(ControlClient::ofSession(session).setBorrowsShortcuts(true));
    EXPECT_TRUE(ControlClient::ofSession(session).setBorrowsShortcuts(false));
    EXPECT_TRUE(quit(session));
    EXPECT_EQ(server.asked(), (std::vector<std::string>{"open", "perform leftHalf", "rule org.example.Übung none",
                                                        "take shortcuts", "give back shortcuts", "quit"}));
}

TEST(ControlSocket, TheStatusArrivesAsItWasGiven) {
    const Session session = uniqueSession("status");
    ControlStatus report{
        .status = "shortcutsTaken",
        .statusText = "Some shortcuts are taken: center",
        .isEnabled = true,
        .isTrusted = true,
        .isReplaced = true,
        .version = "1.2",
        .backend = "X11",
        .shortcuts = {{"leftHalf", "Ctrl+Alt+←", "active"},
                      {"center", "Ctrl+Alt+C", "taken", "GNOME", "shows all windows"},
                      {"maximize", "Ctrl+Alt+↑", "active"},
                      {"maximizeHeight", "Ctrl+Alt+↓", "taken", "", "", false, false, "keySequence",
                       "Teil einer Folge"}},
        .rules = {{"org.example.Editor", "maximize"}, {"übung", "center"}},
    };
    report.borrowsShortcuts = true;
    report.shortcuts.at(1).canBeBorrowed = true;
    report.shortcuts.at(2).isBorrowed = true;
    const ControlServer server(session, [&](RecordedRequests& requests) { requests.report = report; });
    EXPECT_EQ(ControlClient::ofSession(session).status(), report);
    EXPECT_TRUE(quit(session));
}

TEST(ControlSocket, ARefusalArrivesWithItsKindAndReason) {
    const Session session = uniqueSession("refusals");
    const std::vector<ControlRefusal> refusals{{Kind::invalid, "no such action"},
                                               {Kind::paused, "paused"},
                                               {Kind::notTrusted, "waiting"},
                                               {Kind::noWindow, "no window"},
                                               {Kind::failed, "something “else”"}};
    const ControlServer server(session, [&](RecordedRequests& requests) {
        for (const ControlRefusal& refusal : refusals) {
            requests.refusals.emplace(refusal.reason, refusal);
        }
    });
    for (const ControlRefusal& refusal : refusals) {
        EXPECT_EQ(perform(ControlClient::ofSession(session), refusal.reason), std::unexpected(refusal));
    }
    EXPECT_TRUE(quit(session));
}

TEST(ControlSocket, AnAnswerThatIsGivenLaterArrives) {
    const Session session = uniqueSession("later");
    std::vector<std::unique_ptr<ScheduledWork>> later;
    const ControlServer server(
        [&](MainLoop& loop, RecordedRequests& requests, const std::function<void()>& run) {
            requests.refusals.emplace("second", ControlRefusal{.kind = Kind::failed, .reason = "late"});
            requests.delay = [&](const std::function<void()>& reply) {
                later.push_back(loop.schedule(loop.now() + std::chrono::milliseconds(20), {}, reply));
            };
            auto instance = SingleInstance::acquire(session);
            ASSERT_TRUE(instance);
            ControlSocket socket(loop, *instance);
            socket.serve(requests);
            run();
            later.clear();
        },
        [](RecordedRequests&) {});
    EXPECT_TRUE(perform(ControlClient::ofSession(session), "first"));
    EXPECT_EQ(perform(ControlClient::ofSession(session), "second"),
              std::unexpected(ControlRefusal{.kind = Kind::failed, .reason = "late"}));
}

TEST(ControlSocket, AnAnswerToACallerThatIsGoneHarmsNobody) {
    const Session session = uniqueSession("gone");
    std::vector<std::function<void()>> replies;
    ControlServer server(
        [&](MainLoop& loop, RecordedRequests& requests, const std::function<void()>& run) {
            // The first caller waits in vain until its patience ends, and is answered then.
            requests.delay = [&](const std::function<void()>& reply) {
                replies.push_back(reply);
                if (replies.size() == 2) {
                    replies[0]();
                    replies[1]();
                }
            };
            auto instance = SingleInstance::acquire(session);
            ASSERT_TRUE(instance);
            ControlSocket socket(loop, *instance);
            socket.serve(requests);
            run();
            replies.clear();
        },
        [](RecordedRequests&) {});
    EXPECT_EQ(perform(ControlClient::ofSession(session), "first").error().kind, Kind::noAnswer);
    EXPECT_TRUE(perform(ControlClient::ofSession(session), "second"));
}

TEST(ControlSocket, WithoutARunningProgramEveryRequestReportsThat) {
    const Session session = uniqueSession("nobody");
    EXPECT_EQ(ControlClient::ofSession(session).open().error().kind, Kind::notRunning);
    EXPECT_EQ(ControlClient::ofSession(session).status().error().kind, Kind::notRunning);
    EXPECT_EQ(quit(session).error().kind, Kind::notRunning);
}

TEST(ControlSocket, AProgramThatHangsIsWaitedForNoLongerThanItShould) {
    const Session session = uniqueSession("hangs");
    const auto instance = SingleInstance::acquire(session);
    ASSERT_TRUE(instance);
    const auto started = Clock::now();
    const auto answer = ControlClient::ofSession(session).status();
    EXPECT_EQ(answer.error().kind, Kind::noAnswer);
    EXPECT_GE(Clock::now() - started, ControlClient::patience - milliseconds(1));
    EXPECT_LT(Clock::now() - started, ControlClient::patience + milliseconds(500));
}

TEST(ControlSocket, AProgramThatEndsBeforeItAnswersIsNotRunning) {
    const Session session = uniqueSession("ends");
    std::optional instance = SingleInstance::acquire(session);
    ControlClient client = ControlClient::ofSession(session);
    instance.reset();
    EXPECT_EQ(client.status().error().kind, Kind::notRunning);
}

/// Uses up this process's descriptors while it lives.
class NoDescriptor {
public:
    NoDescriptor() {
        ::getrlimit(RLIMIT_NOFILE, &before);
        const FileDescriptor lowest{::eventfd(0, EFD_CLOEXEC)};
        rlimit lowered = before;
        lowered.rlim_cur = static_cast<rlim_t>(lowest.get());
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &lowered), 0);
    }

    NoDescriptor(const NoDescriptor&) = delete;
    NoDescriptor& operator=(const NoDescriptor&) = delete;
    ~NoDescriptor() { ::setrlimit(RLIMIT_NOFILE, &before); }

private:
    rlimit before{};
};

TEST(ControlSocket, WithoutADescriptorForItAConnectionWaitsAndCostsNothing) {
    const Session session = uniqueSession("descriptors");
    auto instance = SingleInstance::acquire(session);
    ASSERT_TRUE(instance);
    MainLoop loop;
    RecordedRequests requests([] {});
    ControlSocket socket(loop, *instance);
    socket.serve(requests);
    int turns = 0;
    const auto turnEnd = loop.atEndOfTurn([&] { ++turns; });
    // A sanitizer checks through a pipe whether it may read an object. It does so once for each type.
    const FileDescriptor something(::eventfd(0, EFD_CLOEXEC));
    loop.watch(something.get(), [] { return false; }, [] {}).reset();

    // Connected to the socket, in the listen queue.
    const std::expected<FileDescriptor, int> connection = SingleInstance::connect(session);
    ASSERT_TRUE(connection);
    std::optional<NoDescriptor> exhausted(std::in_place);
    const std::string greeting = std::string(1, '\0') + "AUTH EXTERNAL\r\n";
    ASSERT_EQ(::send(connection->get(), greeting.data(), greeting.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(greeting.size()));
    int turnsMeanwhile = 0;
    const auto end = loop.schedule(loop.now() + milliseconds(200), {}, [&] {
        turnsMeanwhile = turns;
        exhausted.reset();
    });
    const auto answer = loop.watch(connection->get(), [] { return false; }, [&] { loop.end(0); });
    const auto deadline = loop.schedule(loop.now() + std::chrono::seconds(10), {}, [&] { loop.end(1); });
    EXPECT_EQ(loop.run(), 0) << "no answer";
    EXPECT_LT(turnsMeanwhile, 10);
    std::array<char, 64> bytes{};
    EXPECT_GT(::recv(connection->get(), bytes.data(), bytes.size(), MSG_DONTWAIT), 0);
}

/// Requests the status until there is a reply, from the socket in the runtime folder or from the abstract name.
bool isAnsweredInTheEnd(const Session& session, bool isInFolder) {
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (Clock::now() < deadline) {
        if (std::filesystem::exists(session.runtimeFolder + "/tessel") == isInFolder &&
            ControlClient::ofSession(session).status()) {
            return true;
        }
        std::this_thread::yield();
    }
    return false;
}

TEST(ControlSocket, RepliesAgainAfterTheRuntimeFolderWasEmptied) {
    const TemporaryFolder runtime;
    const Session session{.display = ":emptied", .runtimeFolder = runtime.path};
    const ControlServer server(session);
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(ControlClient::ofSession(session).status());
        std::filesystem::remove_all(runtime / "tessel");
        EXPECT_TRUE(isAnsweredInTheEnd(session, true));
        EXPECT_FALSE(claimSession(session));
    }
}

TEST(ControlSocket, AnswersAlsoWhileItsRuntimeFolderIsAway) {
    const TemporaryFolder runtime;
    const std::string away = runtime.path + ".away";
    const Session session{.display = ":away." + std::to_string(::getpid()), .runtimeFolder = runtime.path};
    const ControlServer server(session);
    ASSERT_TRUE(ControlClient::ofSession(session).status());
    std::filesystem::rename(runtime / "tessel", runtime / "away");
    std::filesystem::rename(runtime.path, away);
    EXPECT_TRUE(isAnsweredInTheEnd(session, false));
    EXPECT_FALSE(claimSession(session));
    std::filesystem::rename(away, runtime.path);
    std::filesystem::remove_all(runtime / "away");
    EXPECT_TRUE(isAnsweredInTheEnd(session, true));
    EXPECT_FALSE(claimSession(session));
}

TEST(ControlSocket, AnArgumentThatIsNoTextIsRefusedBeforeItIsSent) {
    const Session session = uniqueSession("bytes");
    ControlServer server(session);
    EXPECT_EQ(ControlClient::ofSession(session).setRule("a\xFF", "none").error().kind, Kind::invalid);
    EXPECT_TRUE(quit(session));
    EXPECT_EQ(server.asked(), std::vector<std::string>{"quit"});
}

} // namespace
} // namespace platform::linux
