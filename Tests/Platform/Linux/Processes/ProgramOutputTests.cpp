#include "Platform/Linux/Processes/ProgramOutput.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <optional>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class ProgramOutputTest : public testing::Test {
protected:
    TemporaryFolder folder;
    MainLoop loop;
    std::unique_ptr<ProgramOutput> output;
    int times = 0;
    std::optional<std::string> printed;

    [[nodiscard]] std::string script(const std::string& commands) const {
        std::string path = folder / "script";
        write(path, "#!/bin/sh\n" + commands);
        EXPECT_EQ(::chmod(path.c_str(), S_IRWXU), 0);
        return path;
    }

    void start(const std::string& commands, Duration patience = ProgramOutput::usualPatience) {
        output = ProgramOutput::of(
            loop, script(commands), {"first", "second word"},
            [this](const std::optional<std::string>& text) {
                printed = text;
                ++times;
                output.reset();
            },
            patience);
        ASSERT_NE(output, nullptr);
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    /// Whether every started program has been reaped.
    bool hasNoChildren() {
        return runUntil([] { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; });
    }
};

TEST_F(ProgramOutputTest, IsAllThatTheProgramPrintsToItsOutput) {
    start("echo \"$1|$2\"; echo hidden >&2; read -r line && echo \"$line\"; seq 30000; echo end");
    ASSERT_TRUE(runUntil([&] { return times > 0; }));
    ASSERT_TRUE(printed);
    EXPECT_TRUE(printed->starts_with("first|second word\n1\n"));
    EXPECT_TRUE(printed->ends_with("\n30000\nend\n"));
    EXPECT_EQ(times, 1);
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(ProgramOutputTest, IsNothingOfAProgramThatFails) {
    start("echo something; exit 3");
    ASSERT_TRUE(runUntil([&] { return times > 0; }));
    EXPECT_EQ(printed, std::nullopt);
}

TEST_F(ProgramOutputTest, EndsAProgramThatTakesTooLong) {
    start("echo $$ >" + (folder / "process") + "; exec sleep 1000", milliseconds(300));
    ASSERT_TRUE(runUntil([&] { return times > 0; }));
    EXPECT_EQ(printed, std::nullopt);
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(ProgramOutputTest, EndsAProgramThatPrintsTooMuch) {
    start("exec yes");
    ASSERT_TRUE(runUntil([&] { return times > 0; }));
    EXPECT_EQ(printed, std::nullopt);
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(ProgramOutputTest, EndsWithItsOwnerWithoutACallback) {
    start("echo early; exec sleep 1000");
    output.reset();
    EXPECT_TRUE(hasNoChildren());
    EXPECT_EQ(times, 0);
}

TEST_F(ProgramOutputTest, IsNoneWhereThereIsNoProgram) {
    const auto none = ProgramOutput::of(loop, "/nonexistent/program", {}, [](const auto&) { FAIL(); });
    EXPECT_EQ(none, nullptr);
}

} // namespace
} // namespace platform::linux
