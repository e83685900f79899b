#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/ControlMessages.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Tests/Platform/Linux/Control/ControlServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <list>
#include <string>
#include <string_view>
#include <utility>

namespace platform::linux {
namespace {

/// Limit, in milliseconds, for an event that takes some milliseconds unless the machine is busy.
constexpr int peerPatience = 30'000;

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
        EXPECT_TRUE(ControlClient::ofSession(session).quit());
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
        while (::poll(&wanted, 1, peerPatience) > 0) {
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
            if (count < 0 && (errno != EAGAIN || ::poll(&wanted, 1, peerPatience) <= 0)) {
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
    EXPECT_EQ(::poll(&wanted, 1, peerPatience), 1);
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
