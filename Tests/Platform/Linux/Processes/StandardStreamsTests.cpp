#include "Platform/Linux/Log/Log.h"
#include "Platform/Linux/Processes/StandardStreams.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace platform::linux {
namespace {

bool isNothing(int descriptor) {
    struct stat opened{};
    struct stat nothing{};
    return ::fstat(descriptor, &opened) == 0 && ::stat("/dev/null", &nothing) == 0 && opened.st_rdev == nothing.st_rdev;
}

void closeAndOpen(std::initializer_list<int> closed) {
    for (const int standard : closed) {
        ::close(standard);
    }
    openClosedStandardStreams();
    for (const int standard : closed) {
        if (!isNothing(standard)) {
            std::_Exit(standard + 1);
        }
    }
    std::_Exit(EXIT_SUCCESS);
}

TEST(StandardStreamsDeathTest, ThoseThatAreClosedLeadNowhere) {
    EXPECT_EXIT(closeAndOpen({STDERR_FILENO}), testing::ExitedWithCode(EXIT_SUCCESS), "");
    EXPECT_EXIT(closeAndOpen({STDOUT_FILENO, STDERR_FILENO}), testing::ExitedWithCode(EXIT_SUCCESS), "");
    EXPECT_EXIT(closeAndOpen({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST(StandardStreamsDeathTest, ThoseThatAreOpenStayWhatTheyAre) {
    const auto look = [] {
        struct stat before{};
        struct stat after{};
        ::fstat(STDERR_FILENO, &before);
        ::close(STDOUT_FILENO);
        openClosedStandardStreams();
        ::fstat(STDERR_FILENO, &after);
        std::_Exit(before.st_ino == after.st_ino && before.st_dev == after.st_dev ? EXIT_SUCCESS : EXIT_FAILURE);
    };
    EXPECT_EXIT(look(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

/// Replaces standard error with a pipe without a reader.
void loseReader() {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ::close(ends[0]);
    ::dup2(ends[1], STDERR_FILENO);
}

TEST(StandardStreamsDeathTest, AReaderThatGoesEndsNobody) {
    const auto write = [] {
        loseReader();
        outliveStandardReaders();
        logToStandardError("a line");
        std::_Exit(EXIT_SUCCESS);
    };
    EXPECT_EXIT(write(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST(StandardStreamsDeathTest, AReaderThatGoesStillEndsTheProgramsThatAreStarted) {
    const auto start = [] {
        loseReader();
        outliveStandardReaders();
        ::execl("/bin/sh", "sh", "-c", "echo >&2; exit 3", nullptr);
    };
    EXPECT_EXIT(start(), testing::KilledBySignal(SIGPIPE), "");
}

TEST(StandardStreamsDeathTest, LostOutputIsReported) {
    const auto print = [](const char* where) {
        ::dup2(::open(where, O_WRONLY), STDOUT_FILENO);
        std::_Exit(printToStandardOutput("an answer") ? EXIT_SUCCESS : EXIT_FAILURE);
    };
    EXPECT_EXIT(print("/dev/full"), testing::ExitedWithCode(EXIT_FAILURE),
                ": cannot write to standard output: No space left on device");
    EXPECT_EXIT(print("/dev/null"), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace
} // namespace platform::linux
