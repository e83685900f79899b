#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Files/LocalSocket.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <string>

namespace platform::linux {
namespace {

TEST(LocalSocket, TellsWhichProcessListens) {
    const TemporaryFolder folder;
    const std::string path = folder / "socket";
    EXPECT_FALSE(isListenedTo(path));
    EXPECT_EQ(listenerAt(path), std::nullopt);
    {
        const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        ASSERT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listenerAt(path), std::nullopt) << "nobody listens yet";
        ASSERT_EQ(::listen(socket.get(), 4), 0);
        EXPECT_TRUE(isListenedTo(path));
        EXPECT_EQ(listenerAt(path), ::getpid());
    }
    // As after a crash.
    EXPECT_EQ(listenerAt(path), std::nullopt);
    EXPECT_EQ(listenerAt(""), std::nullopt);
    EXPECT_EQ(listenerAt(std::string(500, 'x')), std::nullopt);
}

} // namespace
} // namespace platform::linux
