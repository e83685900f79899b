#include "Platform/Linux/Control/SingleInstance.h"
#include "Platform/Linux/Control/SocketAddress.h"
#include "Tests/Platform/Linux/Control/ControlServer.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The lock's place.
enum class Kept : std::uint8_t { inFolder, asAbstractName };

class SingleInstanceAnywhere : public testing::TestWithParam<Kept> {
protected:
    [[nodiscard]] static Session session(const std::string& name) {
        Session session = uniqueSession("anywhere-" + name);
        if (GetParam() == Kept::asAbstractName) {
            session.runtimeFolder += "/nonexistent";
        }
        return session;
    }
};

INSTANTIATE_TEST_SUITE_P(, SingleInstanceAnywhere, testing::Values(Kept::inFolder, Kept::asAbstractName),
                         [](const auto& chosen) {
                             return chosen.param == Kept::inFolder ? "InARuntimeFolder" : "WithoutARuntimeFolder";
                         });

TEST_P(SingleInstanceAnywhere, OnlyOneHoldsASession) {
    const auto first = SingleInstance::acquire(session("one"));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->isInFolder(), GetParam() == Kept::inFolder);
    const auto second = SingleInstance::acquire(session("one"));
    ASSERT_FALSE(second);
    EXPECT_TRUE(second.error().isTaken);
    EXPECT_TRUE(SingleInstance::acquire(session("another")));
}

TEST_P(SingleInstanceAnywhere, ASessionIsFreeAgainWhenItsHolderIsDropped) {
    std::optional(SingleInstance::acquire(session("dropped"))).reset();
    EXPECT_TRUE(SingleInstance::acquire(session("dropped")));
}

TEST_P(SingleInstanceAnywhere, ASessionIsFreeAgainWhenItsHoldersProcessIsKilled) {
    const Session held = session("killed");
    const pid_t child = fork();
    if (child == 0) {
        const auto instance = SingleInstance::acquire(held);
        _exit(instance && kill(getpid(), SIGKILL) == 0 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child could not take the session";
    EXPECT_EQ(SingleInstance::connect(held).error(), ECONNREFUSED);
    const auto next = SingleInstance::acquire(held);
    ASSERT_TRUE(next) << next.error().reason;
    EXPECT_TRUE(SingleInstance::connect(held));
}

TEST_P(SingleInstanceAnywhere, LongSessionNamesAreDistinguishedByTheirEnds) {
    Session path = session("wayland");
    path.display = "/" + std::string(500, 'x') + "/" + path.display;
    Session other = path;
    other.display += "-1";
    const auto first = SingleInstance::acquire(path);
    EXPECT_TRUE(first);
    EXPECT_TRUE(SingleInstance::acquire(other));
}

TEST_P(SingleInstanceAnywhere, ALongSessionNameIsCutOffRatherThanRefused) {
    Session path = session("long");
    path.display += std::string(500, '/');
    const auto first = SingleInstance::acquire(path);
    EXPECT_TRUE(first);
    EXPECT_FALSE(SingleInstance::acquire(path));
    EXPECT_TRUE(SingleInstance::connect(path));
}

/// A private runtime folder.
class SingleInstanceFiles : public testing::Test {
protected:
    [[nodiscard]] Session session(const std::string& display = ":7") const {
        return {.display = display, .runtimeFolder = runtime.path};
    }

    [[nodiscard]] std::vector<std::string> files() const { return namesIn(runtime / "tessel"); }

    TemporaryFolder runtime;
};

TEST_F(SingleInstanceFiles, AreNamedAfterTheDisplayAndGoWithTheHolder) {
    {
        const auto first = SingleInstance::acquire(session());
        const auto second = SingleInstance::acquire(session("/run/user/7/wayland-1"));
        EXPECT_THAT(files(), testing::ElementsAre("%2Frun%2Fuser%2F7%2Fwayland-1.lock",
                                                  "%2Frun%2Fuser%2F7%2Fwayland-1.socket", ":7.lock", ":7.socket"));
        EXPECT_EQ(modeOf(runtime / "tessel"), 0700U);
    }
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(SingleInstanceFiles, ListTheSessions) {
    EXPECT_THAT(sessionsWithSockets(runtime.path), IsEmpty());
    const auto first = SingleInstance::acquire(session());
    const auto second = SingleInstance::acquire(session("/run/user/7/wayland-1"));
    const std::vector<Session> sessions = sessionsWithSockets(runtime.path);
    EXPECT_EQ(sessions.size(), 2U);
    for (const Session& each : sessions) {
        EXPECT_TRUE(SingleInstance::connect(each)) << each.display;
    }
}

TEST_F(SingleInstanceFiles, AreFoundAtTheEndOfALongPath) {
    Session deep = session();
    deep.runtimeFolder = runtime / std::string(200, 'x');
    ASSERT_EQ(::mkdir(deep.runtimeFolder.c_str(), 0700), 0);
    const auto holder = SingleInstance::acquire(deep);
    ASSERT_TRUE(holder);
    EXPECT_TRUE(holder->isInFolder());
    EXPECT_TRUE(SingleInstance::connect(deep));
}

TEST_F(SingleInstanceFiles, AreNotPutWhereOthersCanReplaceThem) {
    for (const mode_t mode : {0755U, 0770U, 0701U}) {
        ASSERT_EQ(::chmod(runtime.path.c_str(), mode), 0);
        const auto holder = SingleInstance::acquire(session());
        ASSERT_TRUE(holder);
        EXPECT_FALSE(holder->isInFolder()) << mode;
        EXPECT_FALSE(std::filesystem::exists(runtime / "tessel"));
        EXPECT_TRUE(SingleInstance::connect(session()));
    }
}

TEST_F(SingleInstanceFiles, AreNotPutBehindALink) {
    const TemporaryFolder elsewhere;
    std::filesystem::create_directory_symlink(elsewhere.path, runtime / "tessel");
    const auto holder = SingleInstance::acquire(session());
    ASSERT_TRUE(holder);
    EXPECT_FALSE(holder->isInFolder());
    EXPECT_THAT(namesIn(elsewhere.path), IsEmpty());
}

TEST_F(SingleInstanceFiles, AreMadeAgainAfterTheirRemoval) {
    auto holder = SingleInstance::acquire(session());
    ASSERT_TRUE(holder);
    const auto removals = std::to_array<std::function<void()>>({
        [&] { std::filesystem::remove(runtime / "tessel/:7.socket"); },
        [&] { std::filesystem::remove(runtime / "tessel/:7.lock"); },
        [&] { std::filesystem::remove_all(runtime / "tessel"); },
        [&] {
            std::filesystem::remove_all(runtime.path);
            std::filesystem::create_directory(runtime.path);
            std::filesystem::permissions(runtime.path, std::filesystem::perms::owner_all);
        },
    });
    for (const auto& remove : removals) {
        EXPECT_TRUE(holder->isReachable());
        remove();
        EXPECT_FALSE(holder->isReachable());
        ASSERT_TRUE(holder->renew());
        EXPECT_TRUE(SingleInstance::connect(session()));
        EXPECT_FALSE(SingleInstance::acquire(session()));
        EXPECT_EQ(files().size(), 2U);
    }
}

TEST_F(SingleInstanceFiles, AreAnAbstractNameWhileTheRuntimeFolderIsAway) {
    auto holder = SingleInstance::acquire(session());
    ASSERT_TRUE(holder);
    std::filesystem::rename(runtime.path, runtime.path + ".away");
    EXPECT_FALSE(holder->isReachable());
    ASSERT_TRUE(holder->renew());
    EXPECT_FALSE(holder->isInFolder());
    EXPECT_TRUE(SingleInstance::connect(session()));
    std::filesystem::rename(runtime.path + ".away", runtime.path);
    EXPECT_FALSE(holder->isReachable());
    ASSERT_TRUE(holder->renew());
    EXPECT_TRUE(holder->isInFolder());
    EXPECT_TRUE(SingleInstance::connect(session()));
}

TEST_F(SingleInstanceFiles, OfALaterOwnerOfTheSessionAreLeftAlone) {
    std::optional first = SingleInstance::acquire(session());
    ASSERT_TRUE(*first);
    std::filesystem::remove_all(runtime / "tessel");
    std::optional second = SingleInstance::acquire(session());
    ASSERT_TRUE(*second);
    EXPECT_FALSE((*first)->isReachable());
    const auto renewed = (*first)->renew();
    ASSERT_FALSE(renewed);
    EXPECT_TRUE(renewed.error().isTaken);
    EXPECT_EQ((*first)->listeningSocket(), -1);
    first.reset();
    EXPECT_TRUE((*second)->isReachable());
    EXPECT_TRUE(SingleInstance::connect(session()));
}

/// A process of another user that runs a function at once, and then waits to be ended. Needs root.
class Stranger {
public:
    static constexpr uid_t user = 65534;

    explicit Stranger(const std::function<bool()>& act) {
        std::array<int, 2> reported{};
        EXPECT_EQ(::pipe(reported.data()), 0);
        process = ::fork();
        if (process == 0) {
            const bool isDone = ::setresgid(user, user, user) == 0 && ::setresuid(user, user, user) == 0 && act();
            const char answer = isDone ? 'y' : 'n';
            _exit(::write(reported[1], &answer, 1) == 1 && ::pause() == 0 ? 0 : 1);
        }
        ::close(reported[1]);
        const FileDescriptor reading{reported[0]};
        char answer = 0;
        EXPECT_EQ(::read(reading.get(), &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
    }

    Stranger(const Stranger&) = delete;
    Stranger& operator=(const Stranger&) = delete;

    ~Stranger() {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }

private:
    pid_t process = -1;
};

/// Listens at the abstract name that this test's user would take.
bool takeAbstractName(const Session& session, uid_t user) {
    static FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM, 0)};
    sockaddr_un name{.sun_family = AF_UNIX, .sun_path = {}};
    const std::string text = "org.corvid.Tessel/" + std::to_string(user) + "/" + session.display;
    std::ranges::copy(text, std::begin(name.sun_path) + 1);
    return ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&name),
                  static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + text.size())) == 0 &&
           ::listen(socket.get(), 5) == 0;
}

TEST(SingleInstanceStranger, OnTheNameIsCalledWhatItIs) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "takes the superuser";
    }
    Session session = uniqueSession("stranger");
    session.runtimeFolder = "/nonexistent";
    const uid_t own = ::getuid();
    const Stranger stranger([&] { return takeAbstractName(session, own); });
    const auto instance = SingleInstance::acquire(session);
    ASSERT_FALSE(instance);
    EXPECT_FALSE(instance.error().isTaken);
    EXPECT_THAT(instance.error().reason, HasSubstr("another user (uid 65534)"));
    EXPECT_EQ(SingleInstance::connect(session).error(), EPERM);
}

TEST(SingleInstanceStranger, OnTheNameDoesNotBlockAUserWithARuntimeFolder) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "takes the superuser";
    }
    const Session session = uniqueSession("harmless");
    const uid_t own = ::getuid();
    const Stranger stranger([&] { return takeAbstractName(session, own); });
    const auto instance = SingleInstance::acquire(session);
    EXPECT_TRUE(instance);
    EXPECT_TRUE(SingleInstance::connect(session));
}

} // namespace
} // namespace platform::linux
