#include "Platform/Linux/DetachedPrograms.h"
#include "Platform/Linux/ProgramStart.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;

/// Writes a script that can be run.
void writeScript(const std::string& path, const std::string& commands) {
    write(path, "#!/bin/sh\n" + commands);
    ASSERT_EQ(::chmod(path.c_str(), S_IRWXU), 0);
}

/// Runs the loop until a condition holds.
void runLoopUntil(MainLoop& loop, const std::function<bool()>& holds) {
    const Instant deadline = loop.now() + std::chrono::seconds(10);
    std::unique_ptr<ScheduledWork> look;
    const std::function<void()> check = [&] {
        if (holds() || loop.now() > deadline) {
            loop.end(0);
        } else {
            look = loop.schedule(loop.now() + milliseconds(2), milliseconds(1), check);
        }
    };
    check();
    EXPECT_EQ(loop.run(), 0);
    EXPECT_TRUE(holds());
}

TEST(DetachedPrograms, AreFoundInThePathOnlyWhereTheyCanBeRun) {
    inChildProcess([] {
        const TemporaryFolder folder;
        writeScript(folder / "runs", "");
        write(folder / "document", "");
        ::mkdir((folder / "folder").c_str(), S_IRWXU);
        ::setenv("PATH", (":relative:/nonexistent:" + folder.path).c_str(), 1);
        EXPECT_EQ(findProgram("runs"), folder / "runs");
        EXPECT_EQ(findProgram(folder / "runs"), folder / "runs");
        for (const char* name : {"document", "folder", "nothing", "", "/nonexistent/program"}) {
            EXPECT_EQ(findProgram(name), std::nullopt) << name;
        }
    });
}

TEST(DetachedPrograms, InheritNoDescriptorNoBlockedSignalAndNoSession) {
    inChildProcess([] {
        const TemporaryFolder folder;
        // Not marked for closing, as some library's might be.
        const int leaked = ::open("/dev/null", O_RDONLY);
        ASSERT_GE(::fcntl(leaked, F_DUPFD, 20), 20);
        MainLoop loop;
        loop.endOnTerminationSignals();
        ::signal(SIGPIPE, SIG_IGN);
        DetachedPrograms programs(loop);
        writeScript(folder / "program", "links=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\nexec 9>'" +
                                            folder / "making" +
                                            "'\n"
                                            "echo \"$1|$2\" >&9\n"
                                            "echo \"$links\" >&9\n"
                                            // Without a pipe, whose ends the shell would have open meanwhile.
                                            "ls /proc/$$/fd >&9\n"
                                            "grep -E '^Sig(Blk|Ign)' /proc/self/status >&9\n"
                                            "[ \"$(cut -d' ' -f6 /proc/$$/stat)\" = $$ ] && echo own session >&9\n"
                                            "mv '" +
                                            folder / "making" + "' '" + folder / "made" + "'\n");
        ASSERT_TRUE(programs.start(folder / "program", {"one argument", "$HOME; `ls`"}));
        runLoopUntil(loop, [&] { return ::access((folder / "made").c_str(), F_OK) == 0; });
        const std::string told = contentsOf(folder / "made");
        EXPECT_THAT(told, testing::StartsWith("one argument|$HOME; `ls`\n/dev/null\n/dev/null\n/dev/null\n"));
        // The two above the ordinary signals are the C library's own.
        EXPECT_THAT(told, testing::ContainsRegex("SigBlk:\t0000000000000000\nSigIgn:\t[0-9]+0000000\n"));
        EXPECT_THAT(told, testing::HasSubstr("own session\n"));
        // 9 is the script's own; a shell keeps the script itself open above it.
        EXPECT_THAT(told, testing::Not(testing::HasSubstr("\n20\n")));
        EXPECT_THAT(told, testing::Not(testing::HasSubstr("\n3\n")));
    });
}

TEST(DetachedPrograms, InheritTheEnvironmentThatThisProgramWasStartedWith) {
    inChildProcess([] {
        const TemporaryFolder folder;
        MainLoop loop;
        DetachedPrograms programs(loop);
        // As a toolkit does for its own sake.
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        const std::string home = std::getenv("HOME");
        ::unsetenv("HOME");
        writeScript(folder / "program", "echo \"$QT_QPA_PLATFORM|$HOME\" >'" + folder / "making" + "'\nmv '" +
                                            folder / "making" + "' '" + folder / "made" + "'\n");
        ASSERT_TRUE(programs.start(folder / "program", {}));
        runUntil(loop, [&] { return ::access((folder / "made").c_str(), F_OK) == 0; });
        EXPECT_EQ(contentsOf(folder / "made"), "|" + home + "\n");
    });
}

TEST(DetachedPrograms, AreCollectedWithinAFewTurnsOfTheLoop) {
    inChildProcess([] {
        MainLoop loop;
        DetachedPrograms programs(loop);
        for (int round = 0; round < 200; ++round) {
            ASSERT_TRUE(programs.start("/bin/true", {}));
            siginfo_t ended{};
            ASSERT_EQ(::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT), 0);
            const auto isCollected = [] {
                return ::waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT) < 0 && errno == ECHILD;
            };
            int turns = 0;
            while (!isCollected() && ++turns < 20) {
                ASSERT_GE(sd_event_run(loop.handle(), 1000), 0);
            }
            ASSERT_TRUE(isCollected()) << "round " << round;
        }
    });
}

TEST(DetachedPrograms, LeaveNoZombieBehind) {
    inChildProcess([] {
        const TemporaryFolder folder;
        writeScript(folder / "program", "touch '" + folder / "ran" + "'\n");
        MainLoop loop;
        DetachedPrograms programs(loop);
        ASSERT_TRUE(programs.start(folder / "program", {}));
        runLoopUntil(loop,
                     [] { return ::waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT) < 0 && errno == ECHILD; });
        EXPECT_EQ(::access((folder / "ran").c_str(), F_OK), 0);
    });
}

TEST(DetachedPrograms, OneThatIsNotThereIsNotStarted) {
    MainLoop loop;
    DetachedPrograms programs(loop);
    EXPECT_FALSE(programs.start("/nonexistent/program", {}));
}

} // namespace
} // namespace platform::linux
