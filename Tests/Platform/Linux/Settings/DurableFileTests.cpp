#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Log/Log.h"
#include "Platform/Linux/Settings/DurableFile.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace {

namespace DurableFile = platform::linux::DurableFile;
using platform::linux::FileDescriptor;
using testing::HasSubstr;
using testing::MatchesRegex;

TEST(DurableFile, ReplacesWithExactlyTheGivenBytes) {
    const TemporaryFolder folder;
    const std::string path = folder / "file";
    for (const std::string& contents : {std::string(100000, 'x'), std::string("a\0b\r\n", 5), std::string{}}) {
        ASSERT_TRUE(DurableFile::replace(path, contents));
        EXPECT_EQ(DurableFile::read(path).value(), contents);
    }
}

TEST(DurableFile, ReadsNothingWhereThereIsNoFileOrNoFolder) {
    const TemporaryFolder folder;
    write(folder / "file", "");
    EXPECT_EQ(DurableFile::read(folder / "missing").value(), std::nullopt);
    EXPECT_EQ(DurableFile::read(folder / "missing/file").value(), std::nullopt);
    EXPECT_EQ(DurableFile::read(folder / "file/below").value(), std::nullopt);
}

TEST(DurableFile, WillNotReadAFolder) {
    const TemporaryFolder folder;
    const auto contents = DurableFile::read(folder.path);
    ASSERT_FALSE(contents);
    EXPECT_EQ(contents.error().kind, DurableFile::ReadFailure::Kind::notAFile);
    EXPECT_EQ(contents.error().reason, folder.path + " is not a file");
}

TEST(DurableFile, SaysWhatFailedAndWhere) {
    const TemporaryFolder folder;
    write(folder / "file", "");
    const auto replaced = DurableFile::replace(folder / "file/below", "contents");
    ASSERT_FALSE(replaced);
    EXPECT_THAT(replaced.error(), HasSubstr(folder / "file"));
    EXPECT_THAT(replaced.error(), HasSubstr("Not a directory"));
}

TEST(DurableFile, KeepsAFileBesideUnderATimeOfDay) {
    const TemporaryFolder folder;
    write(folder / "file", "contents");
    const auto kept = DurableFile::keepBeside(folder / "file");
    ASSERT_TRUE(kept && *kept);
    EXPECT_THAT(**kept, MatchesRegex(".*/file\\.unreadable-[0-9]{8}T[0-9]{6}Z"));
    EXPECT_EQ(contentsOf(**kept), "contents");
    EXPECT_FALSE(std::filesystem::exists(folder / "file"));
}

TEST(DurableFile, KeepsNothingBesideWhereThereIsNoFile) {
    const TemporaryFolder folder;
    const auto kept = DurableFile::keepBeside(folder / "file");
    ASSERT_TRUE(kept);
    EXPECT_EQ(*kept, std::nullopt);
    EXPECT_TRUE(namesIn(folder.path).empty());
}

TEST(DurableFile, GivesAPathThatIsNoLinkBackAsItIs) {
    const TemporaryFolder folder;
    write(folder / "file", "");
    EXPECT_EQ(DurableFile::followLinks(folder / "file"), folder / "file");
    EXPECT_EQ(DurableFile::followLinks(folder / "missing"), folder / "missing");
}

TEST(FileDescriptor, ClosesWithItsOwnerAndOnlyOnce) {
    int number = -1;
    {
        FileDescriptor first{::open("/dev/null", O_RDONLY | O_CLOEXEC)};
        ASSERT_TRUE(first);
        number = first.get();
        const FileDescriptor second = std::move(first);
        EXPECT_EQ(second.get(), number);
        EXPECT_EQ(::fcntl(number, F_GETFD), FD_CLOEXEC);
    }
    EXPECT_EQ(::fcntl(number, F_GETFD), -1);
}

TEST(Log, WritesOneLineAfterTheProgramsName) {
    testing::internal::CaptureStderr();
    platform::linux::logToStandardError("settings: something");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "LinuxPlatformTests: settings: something\n");
}

} // namespace
