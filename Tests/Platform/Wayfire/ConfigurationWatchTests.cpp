#include "Platform/Wayfire/ConfigurationWatch.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace platform::wayfire {
namespace {

void write(const std::string& path) {
    std::ofstream(path) << "[core]\n";
}

TEST(WayfireConfigurationWatch, TellsOfChangesOfItsFileAloneOnceTheyAreOver) {
    const TemporaryFolder folder;
    const std::string path = folder / "wayfire.ini";
    write(path);
    linux::MainLoop loop;
    int reported = 0;
    Instant reportedAt{};
    const ConfigurationWatch watch(loop, path, [&] {
        ++reported;
        reportedAt = loop.now();
    });
    const auto runUntil = [&](const std::function<bool()>& condition) {
        const Instant end = loop.now() + std::chrono::seconds(10);
        while (!condition() && loop.now() < end && loop.serve() != HostedLoop::Outlook::ended) {
            pollfd waiting{.fd = loop.descriptor(), .events = POLLIN, .revents = 0};
            ::poll(&waiting, 1, 5);
        }
    };
    write(path);
    write(path);
    const Instant written = loop.now();
    // Another file's change postpones nothing.
    runUntil([&] { return loop.now() >= written + ConfigurationWatch::delay / 2; });
    write(folder / "other.ini");
    const Instant otherWritten = loop.now();
    runUntil([&] { return reported > 0; });
    ASSERT_EQ(reported, 1);
    EXPECT_GE(reportedAt, written + ConfigurationWatch::delay - std::chrono::milliseconds(50));
    EXPECT_LT(reportedAt, otherWritten + ConfigurationWatch::delay);
    // As editors do.
    write(folder / "new.ini");
    std::filesystem::rename(folder / "new.ini", path);
    runUntil([&] { return reported > 1; });
    EXPECT_EQ(reported, 2);
}

} // namespace
} // namespace platform::wayfire
