#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>

#include <chrono>
#include <optional>
#include <string>

namespace platform::linux {
namespace {

TEST(BusNames, AreOwnedWhereTheBusSaysSo) {
    MessageBus daemon;
    daemon.start();
    EXPECT_TRUE(hasOwnerOnBus(daemon.address(), "org.freedesktop.DBus"));
    EXPECT_FALSE(hasOwnerOnBus(daemon.address(), "org.example.Nobody"));
    EXPECT_FALSE(hasOwnerOnBus(daemon.address(), "no name at all"));
}

TEST(BusNames, AreNobodysWithoutABus) {
    const TemporaryFolder folder;
    EXPECT_FALSE(hasOwnerOnBus(std::nullopt, "org.freedesktop.DBus"));
    EXPECT_FALSE(hasOwnerOnBus("unix:path=" + folder / "nowhere", "org.freedesktop.DBus"));
    EXPECT_FALSE(hasOwnerOnBus("nonsense", "org.freedesktop.DBus"));
}

TEST(BusNames, AreNotWaitedForOnASilentBus) {
    const TemporaryFolder folder;
    const std::string path = folder / "bus";
    const FileDescriptor listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(static_cast<char*>(address.sun_path), path.size());
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): that is how sockets take their addresses.
    ASSERT_EQ(::bind(listening.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(listening.get(), 1), 0);

    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(hasOwnerOnBus("unix:path=" + path, "org.freedesktop.DBus"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
}

} // namespace
} // namespace platform::linux
