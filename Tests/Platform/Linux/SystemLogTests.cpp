#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/SystemLog.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>

namespace platform::linux {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

TEST(SystemLog, MakesOneLineOfAnyMessage) {
    EXPECT_EQ(SystemLog::line("login", "It failed."), "tessel: [login] It failed.\n");
    EXPECT_EQ(SystemLog::line("", ""), "tessel: [] \n");
    EXPECT_EQ(SystemLog::line("a\nb", "c\r\n\x1b[31md\x7f"), "tessel: [a b] c   [31md \n");
    EXPECT_EQ(SystemLog::line("a", "caf\xc3\xa9"), "tessel: [a] caf\xc3\xa9\n");
    EXPECT_THAT(SystemLog::line(std::string(100'000, 'a'), std::string(100'000, 'b')),
                AllOf(SizeIs(testing::Le(std::size_t{PIPE_BUF})), EndsWith("b\n")));
}

/// A view of the file system in which a folder lies at /run. False where that is not allowed here.
bool haveOwnRunFolder(const std::string& folder) {
    const bool isIsolated = ::unshare(CLONE_NEWNS) == 0 || ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    return isIsolated && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount(folder.c_str(), "/run", nullptr, MS_BIND, nullptr) == 0;
}

FileDescriptor journalSocket() {
    std::filesystem::create_directories("/run/systemd/journal");
    FileDescriptor descriptor{::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)};
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, "/run/systemd/journal/socket");
    EXPECT_EQ(::bind(descriptor.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    return descriptor;
}

std::string receive(const FileDescriptor& descriptor) {
    std::array<char, 16384> buffer{};
    const ssize_t length = ::recv(descriptor.get(), buffer.data(), buffer.size(), 0);
    return {buffer.data(), length < 0 ? 0 : static_cast<std::size_t>(length)};
}

/// What is logged to standard error, which is no terminal here.
std::string standardErrorOf(const std::function<void()>& body) {
    testing::internal::CaptureStderr();
    body();
    return testing::internal::GetCapturedStderr();
}

/// Runs the body where /run is empty.
void withOwnRunFolder(const std::function<void()>& body, bool& isAllowed) {
    const TemporaryFolder run;
    inChildProcess([&] {
        if (!haveOwnRunFolder(run.path)) {
            write(run / "refused", "");
            return;
        }
        body();
    });
    isAllowed = !std::filesystem::exists(run / "refused");
}

TEST(SystemLog, GoesToStandardErrorWithoutAJournal) {
    bool isAllowed = false;
    withOwnRunFolder(
        [] {
            EXPECT_EQ(standardErrorOf([] { SystemLog().error("org.example", "login", "It failed."); }),
                      "tessel: [login] It failed.\n");
        },
        isAllowed);
    if (!isAllowed) {
        GTEST_SKIP() << "needs a view of the file system of its own";
    }
}

TEST(SystemLog, GoesToTheJournalWithItsFields) {
    bool isAllowed = false;
    withOwnRunFolder(
        [] {
            const FileDescriptor journal = journalSocket();
            EXPECT_EQ(standardErrorOf([] { SystemLog().error("org.example", "login", "It failed.\nTwice."); }), "");
            const std::string entry = receive(journal);
            for (const char* field : {"PRIORITY=3\n", "SYSLOG_IDENTIFIER=tessel\n", "TESSEL_SUBSYSTEM=org.example\n",
                                      "TESSEL_CATEGORY=login\n", "It failed.\nTwice."}) {
                EXPECT_THAT(entry, HasSubstr(field));
            }
        },
        isAllowed);
    if (!isAllowed) {
        GTEST_SKIP() << "needs a view of the file system of its own";
    }
}

TEST(SystemLog, DoesNotWaitForAJournalThatIsStuck) {
    bool isAllowed = false;
    withOwnRunFolder(
        [] {
            constexpr unsigned int longEnough = 20;
            ::alarm(longEnough); // ends a process that waits
            const FileDescriptor journal = journalSocket();
            std::string lines;
            // Nobody reads: sooner or later the socket is full, and would hold up whoever sends more.
            constexpr int many = 2000;
            for (int i = 0; i < many && lines.empty(); ++i) {
                lines = standardErrorOf([] { SystemLog().error("org.example", "login", "It failed."); });
            }
            EXPECT_EQ(lines, "tessel: [login] It failed.\n");
        },
        isAllowed);
    if (!isAllowed) {
        GTEST_SKIP() << "needs a view of the file system of its own";
    }
}

TEST(SystemLog, DoesNotWaitForAReaderOfStandardError) {
    inChildProcess([] {
        constexpr unsigned int longEnough = 20;
        ::alarm(longEnough); // ends a process that waits
        std::array<int, 2> ends{};
        ASSERT_EQ(::pipe(ends.data()), 0);
        ASSERT_EQ(::fcntl(ends[1], F_SETPIPE_SZ, 4096), 4096);
        const std::string full(4096, 'x');
        ASSERT_EQ(::write(ends[1], full.data(), full.size()), 4096);
        const int standardError = ::dup(STDERR_FILENO);
        ASSERT_EQ(::dup2(ends[1], STDERR_FILENO), STDERR_FILENO);
        SystemLog().error("org.example", "login", "It failed.");
        ::dup2(standardError, STDERR_FILENO);
    });
}

} // namespace
} // namespace platform::linux
