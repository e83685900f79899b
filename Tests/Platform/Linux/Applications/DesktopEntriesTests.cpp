#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct DesktopEntriesTest : testing::Test {
    /// Runs the loop until the entries report a change; fails when they do not.
    void awaitChange(const std::function<void()>& cause) {
        bool isReported = false;
        entries.onChange([&] { isReported = true; });
        loop.post(cause);
        const Instant deadline = loop.now() + seconds(20);
        while (!isReported && loop.now() < deadline) {
            ASSERT_GE(sd_event_run(loop.handle(), 100'000), 0);
        }
        EXPECT_TRUE(isReported);
        entries.onChange([] {});
    }

    [[nodiscard]] bool has(const std::string& identifier) { return entries.index().find(identifier).has_value(); }

    TemporaryFolder folder;
    std::string first = folder / "deep/in/first";
    std::string second = folder / "second";
    MainLoop loop;
    DesktopEntries entries{
        loop, {.folders = {first, second}, .currentDesktops = {}, .searchPath = ""}, milliseconds(1)};
};

TEST_F(DesktopEntriesTest, AreUpToDateWithoutATurnOfTheLoop) {
    install(second + "/a.desktop");
    EXPECT_TRUE(has("a"));
    install(second + "/b.desktop");
    EXPECT_TRUE(has("b"));
    std::filesystem::remove(second + "/a.desktop");
    EXPECT_FALSE(has("a"));
    std::filesystem::rename(second + "/b.desktop", second + "/c.desktop");
    EXPECT_TRUE(has("c"));
    EXPECT_FALSE(has("b"));
    install(second + "/new/folder/d.desktop");
    EXPECT_TRUE(has("new-folder-d"));
    std::filesystem::remove_all(second);
    EXPECT_FALSE(has("c"));
    install(second + "/e.desktop");
    EXPECT_TRUE(has("e"));
}

TEST_F(DesktopEntriesTest, NoticeAnEntryThatIsRewrittenOrLinked) {
    install(second + "/a.desktop", "StartupWMClass=Old");
    EXPECT_EQ(entries.index()[0].windowClass, "Old");
    install(second + "/a.desktop", "StartupWMClass=New");
    EXPECT_EQ(entries.index()[0].windowClass, "New");
    install(folder / "elsewhere/b.desktop");
    EXPECT_FALSE(has("b"));
    std::filesystem::create_symlink(folder / "elsewhere/b.desktop", second + "/b.desktop");
    EXPECT_TRUE(has("b"));
}

TEST_F(DesktopEntriesTest, NoticeAFolderThatComesLater) {
    EXPECT_EQ(entries.index().size(), 0U);
    std::filesystem::create_directory(folder / "deep");
    EXPECT_EQ(entries.index().size(), 0U);
    std::filesystem::create_directory(folder / "deep/in");
    EXPECT_EQ(entries.index().size(), 0U);
    install(first + "/a.desktop");
    EXPECT_TRUE(has("a"));
}

TEST_F(DesktopEntriesTest, AreNotReadAgainWithoutReason) {
    install(second + "/a.desktop", "StartupWMClass=Old");
    ASSERT_EQ(entries.index()[0].windowClass, "Old");
    // A write through another folder's name for the file is not noticed, so its result shows whether files were read
    // again.
    std::filesystem::create_directory(folder / "elsewhere");
    std::filesystem::create_hard_link(second + "/a.desktop", folder / "elsewhere/a.desktop");
    ASSERT_EQ(entries.index()[0].windowClass, "Old");
    install(folder / "elsewhere/a.desktop", "StartupWMClass=New");
    write(second + "/mimeinfo.cache", "");
    write(folder / "unrelated", "");
    EXPECT_EQ(entries.index()[0].windowClass, "Old");
    install(second + "/b.desktop");
    EXPECT_EQ(entries.index()[0].windowClass, "New");
}

TEST_F(DesktopEntriesTest, ReportChangesInALaterTurn) {
    std::filesystem::create_directories(second);
    ASSERT_EQ(entries.index().size(), 0U);
    awaitChange([&] { install(second + "/a.desktop"); });
    EXPECT_TRUE(has("a"));
}

TEST_F(DesktopEntriesTest, ReportAFolderThatAppearsLater) {
    ASSERT_EQ(entries.index().size(), 0U);
    awaitChange([&] { install(first + "/a.desktop"); });
    EXPECT_TRUE(has("a"));
}

TEST_F(DesktopEntriesTest, ReportManyChangesTogether) {
    std::filesystem::create_directories(second);
    DesktopEntries patient(loop, {.folders = {second}, .currentDesktops = {}, .searchPath = ""}, milliseconds(200));
    ASSERT_EQ(patient.index().size(), 0U);
    int calls = 0;
    patient.onChange([&] { ++calls; });
    loop.post([&] {
        for (int i = 0; i < 50; ++i) {
            install(second + "/application" + std::to_string(i) + ".desktop");
        }
    });
    const Instant deadline = loop.now() + seconds(20);
    while (calls == 0 && loop.now() < deadline) {
        ASSERT_GE(sd_event_run(loop.handle(), 100'000), 0);
    }
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(patient.index().size(), 50U);
}

TEST(FolderWatch, KnowsWhenTheKernelWillNotReportChanges) {
    const TemporaryFolder folder;
    inChildProcess([&] {
        MainLoop loop;
        rlimit limit{};
        ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        const rlimit before = limit;
        limit.rlim_cur = 3; // No descriptor is left for a watch.
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        FolderWatch blind(loop, {folder.path}, ".desktop", milliseconds(1), [] {});
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
        const FolderWatch seeing(loop, {folder.path}, ".desktop", milliseconds(1), [] {});
        EXPECT_FALSE(blind.isComplete());
        EXPECT_FALSE(blind.takeChange());
        EXPECT_TRUE(seeing.isComplete());
    });
}

} // namespace
} // namespace platform::linux
