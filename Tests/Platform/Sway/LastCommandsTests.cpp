#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Sway/LastCommands.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

namespace platform::sway {
namespace {

constexpr const char* socketPath = "/the socket";

/// Turns the loop until a condition holds.
void turnUntil(linux::MainLoop& loop, const std::function<bool()>& holds) {
    const Instant deadline = loop.now() + std::chrono::seconds(10);
    std::unique_ptr<ScheduledWork> look;
    const std::function<void()> check = [&] {
        if (holds() || loop.now() > deadline) {
            loop.end(0);
        } else {
            look = loop.schedule(loop.now() + std::chrono::milliseconds(2), std::chrono::milliseconds(1), check);
        }
    };
    check();
    EXPECT_EQ(loop.run(), 0);
    EXPECT_TRUE(holds());
}

/// The shell's parent has ended, so nobody reaps it; from now on this process does.
void adoptShells() {
    ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
}

/// Reaps the ended processes.
bool hasNoChild() {
    pid_t process = 0;
    do {
        process = ::waitpid(-1, nullptr, WNOHANG);
    } while (process > 0);
    return process < 0 && errno == ECHILD;
}

/// A folder with a `swaymsg` that prints the mode and records its other arguments, first in PATH.
class SwayLastCommands : public testing::Test {
protected:
    SwayLastCommands() {
        setMode("resize");
        const std::string path = folder / "swaymsg";
        write(path, std::string("#!/bin/sh\ntest \"$1 $2\" = '--socket ") + socketPath +
                        "' || exit 1\n"
                        "if test \"$3 $4 $5\" = '--raw --type get_binding_state'; then cat '" +
                        folder / "mode" + "'; else echo \"$3\" >>'" + folder / "done" + "'; fi\n");
        EXPECT_EQ(::chmod(path.c_str(), S_IRWXU), 0);
    }

    void setMode(const std::string& name) { write(folder / "mode", "{\n  \"name\": \"" + name + "\"\n}\n"); }

    void comeFirst() const { ::setenv("PATH", (folder.path + ":/usr/bin:/bin").c_str(), 1); }

    [[nodiscard]] bool isAnyCarriedOut() const { return ::access((folder / "done").c_str(), F_OK) == 0; }

    [[nodiscard]] std::string carriedOut() const {
        linux::MainLoop loop;
        turnUntil(loop, [&] { return isAnyCarriedOut() && contentsOf(folder / "done").ends_with('\n'); });
        return contentsOf(folder / "done");
    }

    TemporaryFolder folder;
};

TEST_F(SwayLastCommands, AreCarriedOutInTheDefaultModeWhenTheProgramIsKilled) {
    const pid_t process = ::fork();
    if (process == 0) {
        comeFirst();
        LastCommands last(socketPath);
        last.set("unbindcode 1");
        last.set("unbindcode 1; unbindcode 2");
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(process, &status, 0), process);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(carriedOut(), "mode \"default\"; unbindcode 1; unbindcode 2; mode \"resize\"\n");
}

TEST_F(SwayLastCommands, AModeThatCannotBeNamedIsLeft) {
    setMode(R"(a \" b)");
    inChildProcess([&] {
        comeFirst();
        LastCommands(socketPath).set("unbindcode 1");
        EXPECT_EQ(carriedOut(), "mode \"default\"; unbindcode 1; mode \"default\"\n");
    });
}

TEST_F(SwayLastCommands, ThatAreTakenBackLeaveNoShellAndDoNothing) {
    inChildProcess([&] {
        comeFirst();
        adoptShells();
        LastCommands last(socketPath);
        last.set("");
        EXPECT_TRUE(hasNoChild());
        last.set("unbindcode 1");
        EXPECT_FALSE(hasNoChild());
        last.set("");
        linux::MainLoop loop;
        turnUntil(loop, hasNoChild);
        EXPECT_FALSE(isAnyCarriedOut());
    });
}

TEST_F(SwayLastCommands, AreLeftToAnotherShellWhereTheFirstOneWasEnded) {
    inChildProcess([&] {
        comeFirst();
        adoptShells();
        {
            LastCommands last(socketPath);
            last.set("unbindcode 1");
            pid_t shell = 0;
            std::ifstream("/proc/thread-self/children") >> shell;
            ASSERT_GT(shell, 0);
            ::kill(shell, SIGKILL);
            siginfo_t ended{};
            ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(shell), &ended, WEXITED | WNOWAIT), 0);
            last.set("unbindcode 2");
        }
        EXPECT_EQ(carriedOut(), "mode \"default\"; unbindcode 2; mode \"resize\"\n");
    });
}

TEST_F(SwayLastCommands, WithoutSwaymsgTheyDoNotRun) {
    inChildProcess([&] {
        ::setenv("PATH", "/nonexistent", 1);
        adoptShells();
        LastCommands last(socketPath);
        last.set("unbindcode 1");
        EXPECT_TRUE(hasNoChild());
    });
}

} // namespace
} // namespace platform::sway
