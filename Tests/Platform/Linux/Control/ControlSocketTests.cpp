#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/ControlMessages.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Tests/Platform/Linux/Control/ControlServer.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <expected>
#include <filesystem>
#include <list>
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

/// Limit, in milliseconds, for an event that takes some milliseconds unless the machine is busy.
constexpr int patience = 30'000;

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

/// A peer that violates the protocol, on a server that must keep working.
class HostilePeer : public testing::Test {
protected:
    HostilePeer()
        : session(uniqueSession("hostile"))
        , server(session, [](RecordedRequests& requests) { requests.report = longReport(); }) {}

    static ControlStatus longReport() {
        ControlStatus report;
        for (int count = 0; count < 1000; ++count) {
            report.rules.emplace("org.example.Application" + std::to_string(count), "maximize");
        }
        return report;
    }

    /// The server answers other clients within their timeout.
    void expectWell() {
        const auto status = ControlClient::ofSession(session).status();
        EXPECT_TRUE(status) << status.error().reason;
    }

    void TearDown() override {
        expectWell();
        EXPECT_TRUE(quit(session));
    }

    [[nodiscard]] FileDescriptor connect() const {
        for (;;) {
            std::expected<FileDescriptor, int> connection = SingleInstance::connect(session);
            if (connection || connection.error() != EAGAIN) {
                EXPECT_TRUE(connection);
                return connection ? *std::move(connection) : FileDescriptor();
            }
        }
    }

    /// Whether the server closes the connection if nothing more is sent.
    [[nodiscard]] static bool isCutOff(const FileDescriptor& connection) {
        std::array<char, 4096> bytes{};
        pollfd wanted{.fd = connection.get(), .events = POLLIN, .revents = 0};
        while (::poll(&wanted, 1, patience) > 0) {
            if (::recv(connection.get(), bytes.data(), bytes.size(), 0) <= 0) {
                return true;
            }
        }
        return false;
    }

    /// Sends until the socket is full. Returns the number of bytes.
    static std::size_t pour(const FileDescriptor& connection, std::string_view bytes) {
        std::size_t sent = 0;
        while (sent < bytes.size()) {
            const auto count =
                ::send(connection.get(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
            pollfd wanted{.fd = connection.get(), .events = POLLOUT, .revents = 0};
            if (count < 0 && (errno != EAGAIN || ::poll(&wanted, 1, patience) <= 0)) {
                return sent;
            }
            sent += count < 0 ? 0 : static_cast<std::size_t>(count);
        }
        return sent;
    }

    /// The handshake before the messages: a client that is known by its peer's credentials (D-Bus Specification,
    /// Authentication Protocol), all sent at once.
    static std::string greeting() { return std::string(1, '\0') + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n"; }

    /// A call of Status with a body whose declared length never arrives.
    static std::string callOfLength(std::uint32_t length) {
        std::string call{'l', 1, 0, 1};
        call.append(reinterpret_cast<const char*>(&length), sizeof(length));
        return call + std::string{1, 0, 0, 0, 0, 0, 0, 0};
    }

    Session session;
    ControlServer server;
};

TEST_F(HostilePeer, IsCutOffForSpeakingSomethingElse) {
    const FileDescriptor connection = connect();
    pour(connection, "GET / HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(isCutOff(connection));
}

TEST_F(HostilePeer, IsCutOffForALineWithoutEnd) {
    const FileDescriptor connection = connect();
    pour(connection, std::string(1, '\0') + "AUTH " + std::string(10 << 20, 'x'));
    EXPECT_TRUE(isCutOff(connection));
}

TEST_F(HostilePeer, IsCutOffLongBeforeAGiantMessageIsComplete) {
    const FileDescriptor connection = connect();
    // The library allocates all of it from the beginning; with AddressSanitizer each read copies that buffer.
    constexpr std::size_t size = 4U << 20U;
    const std::size_t sent = pour(connection, greeting() + callOfLength(size) + std::string(size, 'x'));
    EXPECT_LT(sent, std::size_t{2} << 20U);
    EXPECT_TRUE(isCutOff(connection));
}

TEST_F(HostilePeer, IsCutOffForAMessageOfAnImpossibleLength) {
    const FileDescriptor connection = connect();
    pour(connection, greeting() + callOfLength(0xFFFFFFF0U) + std::string(8, 'x'));
    EXPECT_TRUE(isCutOff(connection));
}

TEST_F(HostilePeer, MayStayAwayInTheMiddleOfAnything) {
    const std::string whole = greeting() + callOfLength(8) + std::string(8, 'x');
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        pour(connect(), std::string_view(whole).substr(0, length));
    }
}

TEST_F(HostilePeer, InThousandsTakesNoPlaceFromOthers) {
    std::list<FileDescriptor> held;
    for (int count = 0; count < 3000; ++count) {
        held.push_back(connect());
        if (held.size() > 500) {
            held.pop_front();
        }
    }
    expectWell();
    // All but the last few have been rejected.
    for (std::size_t kept = held.size(); kept > ControlSocket::mostConnections; --kept) {
        EXPECT_TRUE(isCutOff(held.front()));
        held.pop_front();
    }
}

TEST_F(HostilePeer, IsCutOffForNeverReadingTheAnswers) {
    sd_bus* raw = nullptr;
    ASSERT_EQ(sd_bus_new(&raw), 0);
    const OwnedBus bus(raw);
    const FileDescriptor connection = connect();
    ASSERT_EQ(sd_bus_set_fd(raw, ::dup(connection.get()), ::dup(connection.get())), 0);
    ASSERT_GE(sd_bus_start(raw), 0);
    // Far below the limit for a connection's messages, far above the kernel's buffer for the replies.
    for (int count = 0; count < 200; ++count) {
        sd_bus_message* call = nullptr;
        ASSERT_GE(sd_bus_message_new_method_call(raw, &call, nullptr, ControlMessages::objectPath,
                                                 ControlMessages::interfaceName, "Status"),
                  0);
        const OwnedMessage owned(call);
        std::uint64_t cookie = 0;
        if (sd_bus_send(raw, call, &cookie) < 0 || sd_bus_flush(raw) < 0) {
            break;
        }
    }
    pollfd wanted{.fd = connection.get(), .events = 0, .revents = 0};
    EXPECT_EQ(::poll(&wanted, 1, patience), 1);
    EXPECT_TRUE(wanted.revents & POLLHUP);
}

TEST_F(HostilePeer, IsAnsweredWithAnErrorForArgumentsOfAWrongType) {
    sd_bus* raw = nullptr;
    ASSERT_EQ(sd_bus_new(&raw), 0);
    const OwnedBus bus(raw);
    FileDescriptor connection = connect();
    ASSERT_EQ(sd_bus_set_fd(raw, connection.get(), connection.get()), 0);
    ASSERT_GE(connection.release(), 0);
    ASSERT_GE(sd_bus_start(raw), 0);
    for (const char* member : {"Perform", "SetRule", "Status", "Quit", "Nothing"}) {
        sd_bus_error error{};
        EXPECT_LT(sd_bus_call_method(raw, nullptr, ControlMessages::objectPath, ControlMessages::interfaceName, member,
                                     &error, nullptr, "u", 7U),
                  0)
            << member;
        EXPECT_THAT(error.name, testing::AnyOf(testing::StrEq("org.freedesktop.DBus.Error.InvalidArgs"),
                                               testing::StrEq("org.freedesktop.DBus.Error.UnknownMethod")));
        sd_bus_error_free(&error);
    }
}

} // namespace
} // namespace platform::linux
