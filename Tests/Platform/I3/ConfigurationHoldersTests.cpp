#include "Platform/I3/ConfigurationHolders.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>

namespace platform::i3 {
namespace {

using corvid::Shortcut;
using testing::ElementsAre;

constexpr Shortcut ctrlAltC{.keyCode = 8, .modifiers = Shortcut::control | Shortcut::option};
constexpr Shortcut ctrlAltD{.keyCode = 2, .modifiers = Shortcut::control | Shortcut::option};

/// A simulation of i3's own tool: it prints the file for its arguments.
class PlayedI3 : public testing::Test {
protected:
    TemporaryFolder folder;
    linux::MainLoop loop;
    ConfigurationHolders holders{loop};

    void SetUp() override {
        const std::string tool = folder / "i3-msg";
        write(tool, "#!/bin/sh\nexec cat \"" + folder.path + "/$1-$3\"\n");
        ASSERT_EQ(::chmod(tool.c_str(), S_IRWXU), 0);
        formerPath = std::getenv("PATH");
        ASSERT_EQ(::setenv("PATH", (folder.path + ":" + formerPath).c_str(), 1), 0);
    }

    void TearDown() override { ::setenv("PATH", formerPath.c_str(), 1); }

    ShortcutHolders::Answers answers() {
        std::optional<ShortcutHolders::Answers> reported;
        const auto search = holders.find({ctrlAltC, ctrlAltD}, [&](const auto& given) { reported = given; });
        const Instant deadline = loop.now() + std::chrono::seconds(20);
        while (search && !reported && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return reported.value_or(ShortcutHolders::Answers{});
    }

private:
    std::string formerPath;
};

TEST_F(PlayedI3, ShortcutsAreKnownByTheLinesOfItsConfiguration) {
    write(folder / "--raw-get_version", R"({"loaded_config_file_name":"/etc/i3/config","major":4})");
    write(folder / "--raw-get_config", R"({"config":"set $a Mod1\nbindsym Ctrl+$a+c exec --no-startup-id foot\n"})");
    EXPECT_THAT(answers(),
                ElementsAre(ShortcutHolder{.heldBy = "i3, /etc/i3/config:2", .purpose = "exec --no-startup-id foot"},
                            std::nullopt));
}

TEST_F(PlayedI3, WithoutAFileItIsI3Alone) {
    write(folder / "--raw-get_config", R"({"config":"bindsym Ctrl+Mod1+d kill"})");
    EXPECT_THAT(answers(), ElementsAre(std::nullopt, ShortcutHolder{.heldBy = "i3", .purpose = "kill"}));
}

TEST_F(PlayedI3, NonsenseKnowsNobody) {
    write(folder / "--raw-get_version", "[3");
    write(folder / "--raw-get_config", "\"text\"");
    EXPECT_THAT(answers(), ElementsAre(std::nullopt, std::nullopt));
    ASSERT_EQ(::setenv("PATH", "/nonexistent", 1), 0);
    EXPECT_EQ(holders.find({ctrlAltC}, [](const auto&) { FAIL(); }), nullptr);
}

} // namespace
} // namespace platform::i3
