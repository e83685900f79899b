#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Processes/ProgramStart.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;

/// Writes an executable script.
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

TEST(ProgramStart, FindsInThePathWhatCanBeRun) {
    inChildProcess([] {
        const TemporaryFolder folder;
        MainLoop loop;
        writeScript(folder / "runs", "echo \"$0\" >>'" + folder / "ran" + "'\n");
        write(folder / "document", "");
        ::mkdir((folder / "folder").c_str(), S_IRWXU);
        ::setenv("PATH", (":relative:/nonexistent:" + folder.path).c_str(), 1);
        for (const char* name : {"document", "folder", "nothing", "", "/nonexistent/program"}) {
            EXPECT_FALSE(startProgram(name, {})) << name;
        }
        write(folder / "ran", "");
        EXPECT_TRUE(startProgram("runs", {}));
        EXPECT_TRUE(startProgram(folder / "runs", {}));
        const std::string line = folder / "runs\n";
        runLoopUntil(loop, [&] { return contentsOf(folder / "ran") == line + line; });
    });
}

TEST(ProgramStart, HandsOnNoDescriptorAndNoSession) {
    inChildProcess([] {
        const TemporaryFolder folder;
        // Without close-on-exec, as a library might open it.
        const int leaked = ::open("/dev/null", O_RDONLY);
        ASSERT_GE(::fcntl(leaked, F_DUPFD, 20), 20);
        MainLoop loop;
        loop.endOnTerminationSignals();
        ::signal(SIGPIPE, SIG_IGN);
        writeScript(folder / "program", "links=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\nexec 9>'" +
                                            folder / "making" +
                                            "'\n"
                                            "echo \"$1|$2\" >&9\n"
                                            "echo \"$links\" >&9\n"
                                            // Without a pipe, whose ends the shell would have open meanwhile.
                                            "ls /proc/$$/fd >&9\n"
                                            "grep SigIgn /proc/self/status >&9\n"
                                            "[ \"$(cut -d' ' -f6 /proc/$$/stat)\" = $$ ] && echo own session >&9\n"
                                            "mv '" +
                                            folder / "making" + "' '" + folder / "made" + "'\n");
        ASSERT_TRUE(startProgram(folder / "program", {"one argument", "$HOME; `ls`"}));
        runLoopUntil(loop, [&] { return ::access((folder / "made").c_str(), F_OK) == 0; });
        const std::string reported = contentsOf(folder / "made");
        EXPECT_THAT(reported, testing::StartsWith("one argument|$HOME; `ls`\n/dev/null\n/dev/null\n/dev/null\n"));
        // The two signals above the ordinary ones are the C library's own.
        EXPECT_THAT(reported, testing::ContainsRegex("SigIgn:\t[0-9]+0000000\n"));
        EXPECT_THAT(reported, testing::HasSubstr("own session\n"));
        // 9 is the script's own; a shell keeps the script itself open above it.
        EXPECT_THAT(reported, testing::Not(testing::HasSubstr("\n20\n")));
        EXPECT_THAT(reported, testing::Not(testing::HasSubstr("\n3\n")));
    });
}

TEST(ProgramStart, HandsOnTheEnvironmentThatThisProgramWasStartedWith) {
    inChildProcess([] {
        const TemporaryFolder folder;
        MainLoop loop;
        // As a toolkit does for its own purposes.
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        const std::string home = std::getenv("HOME");
        ::unsetenv("HOME");
        writeScript(folder / "program", "echo \"$QT_QPA_PLATFORM|$HOME\" >'" + folder / "making" + "'\nmv '" +
                                            folder / "making" + "' '" + folder / "made" + "'\n");
        ASSERT_TRUE(startProgram(folder / "program", {}));
        runLoopUntil(loop, [&] { return ::access((folder / "made").c_str(), F_OK) == 0; });
        EXPECT_EQ(contentsOf(folder / "made"), "|" + home + "\n");
    });
}

TEST(ProgramStart, HandsOnNoBlockedSignal) {
    inChildProcess([] {
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGUSR1);
        ASSERT_EQ(::sigprocmask(SIG_BLOCK, &blocked, nullptr), 0);
        // No shell, because a shell unblocks all signals for itself.
        const auto program = startPrinting("grep", {"SigBlk", "/proc/self/status"});
        ASSERT_TRUE(program);
        int status = 0;
        ASSERT_EQ(::waitpid(program->process, &status, 0), program->process);
        std::array<char, 100> printed{};
        ASSERT_GT(::read(program->output.get(), printed.data(), printed.size() - 1), 0);
        EXPECT_STREQ(printed.data(), "SigBlk:\t0000000000000000\n");
    });
}

TEST(ProgramStart, LetsTheProgramReadWhatItIsGiven) {
    inChildProcess([] {
        const TemporaryFolder folder;
        MainLoop loop;
        write(folder / "given", "a line\n");
        const FileDescriptor given(::open((folder / "given").c_str(), O_RDONLY | O_CLOEXEC));
        const std::string read = folder / "read";
        ASSERT_TRUE(startProgram("sh", {"-c", "cat >'" + read + "'"}, given.get()));
        runLoopUntil(loop, [&] { return ::access(read.c_str(), F_OK) == 0 && contentsOf(read) == "a line\n"; });
    });
}

TEST(ProgramStart, LeavesNoChildToWaitFor) {
    inChildProcess([] {
        const TemporaryFolder folder;
        MainLoop loop;
        writeScript(folder / "program", "echo $PPID >'" + folder / "making" + "'\nmv '" + folder / "making" + "' '" +
                                            folder / "made" + "'\n");
        ASSERT_TRUE(startProgram(folder / "program", {}));
        EXPECT_EQ(::waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT), -1);
        EXPECT_EQ(errno, ECHILD);
        runLoopUntil(loop, [&] { return ::access((folder / "made").c_str(), F_OK) == 0; });
        EXPECT_NE(contentsOf(folder / "made"), std::to_string(::getpid()) + "\n");
    });
}

} // namespace
} // namespace platform::linux
