#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Program/ElfNote.h"
#include "Platform/Linux/Program/PluginFile.h"
#include "Platform/Linux/Program/ProgramFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <optional>
#include <string>

namespace platform::linux {
namespace {

using testing::HasSubstr;

FileDescriptor opened(const std::string& path) {
    return FileDescriptor{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
}

/// The first bytes of this program, which contain its headers and its notes.
std::string beginning() {
    constexpr std::size_t enough = 4096;
    return readRegularFile("/proc/self/exe", enough, Excess::cutOff).value_or("");
}

TEST(ElfNote, DistinguishesBuilds) {
    const std::optional<std::string> own = buildIdentity(openProgram());
    ASSERT_TRUE(own);
    EXPECT_GE(own->size(), 8U);
    EXPECT_EQ(buildIdentity(openProgram()), own);
    const std::optional<std::string> other = buildIdentity(opened("/bin/sh"));
    EXPECT_TRUE(other);
    EXPECT_NE(other, own);
    EXPECT_EQ(elfNote(openProgram(), "Tessel", 1), std::nullopt);
}

/// A file in memory only.
FileDescriptor holding(const std::string& contents) {
    FileDescriptor file{::memfd_create("file", MFD_CLOEXEC)};
    EXPECT_EQ(::write(file.get(), contents.data(), contents.size()), static_cast<ssize_t>(contents.size()));
    return file;
}

TEST(ElfNote, IsReadWithoutHarmFromAnything) {
    const std::string whole = beginning();
    for (std::size_t length = 0; length < whole.size(); length += length < 128 ? 1 : 61) {
        static_cast<void>(buildIdentity(holding(whole.substr(0, length))));
    }
    for (std::size_t place = 4; place < 1200; ++place) {
        std::string broken = whole;
        broken[place] = '\xFF';
        static_cast<void>(buildIdentity(holding(broken)));
    }
    EXPECT_EQ(buildIdentity(holding(whole)), buildIdentity(openProgram()));
    EXPECT_EQ(buildIdentity(holding("no program")), std::nullopt);
    EXPECT_EQ(buildIdentity(opened("/")), std::nullopt);
    EXPECT_EQ(buildIdentity(opened("/nonexistent")), std::nullopt);
}

TEST(PluginFile, OfAnotherProgramIsRefusedAndOneThatIsMissingIsNamed) {
    PluginFile foreign("/bin/sh");
    PluginFile missing("/nonexistent/plugin.so");
    const auto refused = foreign.function("puts");
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error(), HasSubstr("another build"));
    EXPECT_EQ(missing.function("puts").error(), "/nonexistent/plugin.so: No such file or directory");
}

} // namespace
} // namespace platform::linux
