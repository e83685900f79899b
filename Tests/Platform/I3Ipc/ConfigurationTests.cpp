#include "Platform/I3Ipc/Configuration.h"
#include "Platform/I3Ipc/LineHolder.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace platform::i3ipc {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;
constexpr std::uint32_t left = 123;
constexpr std::uint32_t c = 8;
constexpr std::uint32_t one = 18;

ConfiguredBindings read(
    const std::string& text,
    const Includes& includes = [](const auto&, const auto&) { return std::vector<ConfigurationFile>(); }) {
    return configuredBindings({.path = "/home/user/.config/sway/config", .text = text}, includes);
}

bool isBound(const std::string& text, std::uint32_t key = left, std::uint32_t modifiers = control | option) {
    const ConfiguredBindings bindings = read(text);
    return bindingOf(bindings, *HotKeyCombination::of(key, modifiers)) != nullptr;
}

TEST(SwayConfiguration, ABindingKnowsItsLineAndWhatItDoes) {
    const Includes includes = [](const std::string& pattern, const std::string& folder) {
        return std::vector<ConfigurationFile>{{.path = folder + "/" + pattern, .text = "\nbindsym Ctrl+Mod1+d kill\n"}};
    };
    const ConfiguredBindings bindings = read("# keys\n"
                                             "set $mod Mod1\n"
                                             "include more\n"
                                             "bindsym --no-repeat \\\n"
                                             "    Ctrl+$mod+Left   workspace  prev\n"
                                             "bindcode {\n"
                                             "    Ctrl+Mod1+54 exec foot\n"
                                             "}\n"
                                             "bindsym Mod1+1 first\n"
                                             "bindsym Mod1+1 second\n",
                                             includes);
    const auto of = [&](std::uint32_t key, std::uint32_t modifiers) {
        const ConfiguredBinding* binding = bindingOf(bindings, *HotKeyCombination::of(key, modifiers));
        return binding == nullptr ? ConfiguredBinding{} : *binding;
    };
    const std::string main = "/home/user/.config/sway/config";
    EXPECT_EQ(of(left, control | option),
              (ConfiguredBinding{.command = "workspace  prev",
                                 .definition = "bindsym --no-repeat     Ctrl+Mod1+Left   workspace  prev",
                                 .path = main,
                                 .line = 4}));
    EXPECT_EQ(of(c, control | option),
              (ConfiguredBinding{
                  .command = "exec foot", .definition = "bindcode Ctrl+Mod1+54 exec foot", .path = main, .line = 7}));
    EXPECT_EQ(of(2, control | option), (ConfiguredBinding{.command = "kill",
                                                          .definition = "bindsym Ctrl+Mod1+d kill",
                                                          .path = "/home/user/.config/sway/more",
                                                          .line = 2}));
    EXPECT_EQ(of(one, option).command, "second") << "the last one counts";
    EXPECT_EQ(of(one, option).line, 10U);
    EXPECT_EQ(bindingOf(bindings, *HotKeyCombination::of(one, control)), nullptr);
}

TEST(SwayConfiguration, ALineThatHoldsAShortcutIsNamedByItsFileAndNumber) {
    const ConfiguredBinding binding{
        .command = "exec foot", .definition = {}, .path = "/home/user/.config/c", .line = 7};
    EXPECT_EQ(lineHolder("sway", binding, "/home/user"),
              (ShortcutHolder{.heldBy = "sway, ~/.config/c:7", .purpose = "exec foot"}));
    for (const char* home : {"", "/home/use", "/home/user/.config/c"}) {
        EXPECT_EQ(lineHolder("sway", binding, home).heldBy, "sway, /home/user/.config/c:7") << home;
    }
    EXPECT_EQ(lineHolder("i3", {.command = "kill", .definition = {}, .path = {}, .line = 7}, "/home/user"),
              (ShortcutHolder{.heldBy = "i3", .purpose = "kill"}));
}

TEST(SwayConfiguration, ACombinationIsRecognizedHoweverItIsWritten) {
    for (const char* text : {
             "bindsym Ctrl+Mod1+Left nop",
             "bindsym Mod1+Ctrl+Left nop",
             "bindsym Control+Alt+Left nop",
             "  bindsym\tcontrol+ALT+left   nop",
             "bindsym \"Control+Mod1+Left\" nop",
             "bindsym --to-code --no-warn Ctrl+Mod1+Left nop",
             "bindsym --input-device=1:1:keyboard Ctrl+Mod1+Left nop",
             "bindsym --release Ctrl+Mod1+Left nop",
             "bindsym Group1+Ctrl+Mod1+Left nop",
             "bindcode Ctrl+Mod1+113 nop",
             "bindcode --locked Mod1+Ctrl+113 nop",
             "set $mod Mod1\nbindsym Ctrl+$mod+Left nop",
             "set $mod Mod1\nset $both Control+$mod\nset $key Left\nbindsym $both+$key nop",
             "set $mod Mod4\nset $mod2 Mod1\nbindsym Ctrl+$mod2+Left nop",
             "bindsym {\n    Ctrl+Mod1+Left nop\n}",
             "bindsym --to-code\n{\n    Ctrl+Mod1+Right nop\n    Ctrl+Mod1+Left nop\n}",
             "mode \"default\" {\n    bindsym Ctrl+Mod1+Left nop\n}",
             "mode default bindsym Ctrl+Mod1+Left nop",
             "mode \"resize\" {\n    bindsym Left nop\n}\nbindsym Ctrl+Mod1+Left nop",
             "bar {\n    colors {\n        background #000000\n    }\n}\nbindsym Ctrl+Mod1+Left nop",
             "bindsym \\\n    Ctrl+Mod1+Left \\\n    nop",
             "bindsym Ctrl+Mod1+Left nop\nbindsym Ctrl+Mod1+Right nop",
             "}\nbindsym Ctrl+Mod1+Left nop\n{",
             "bindsym Ctrl+Mod1+Left nop\r\n",
         }) {
        EXPECT_TRUE(isBound(text)) << text;
    }
}

TEST(SwayConfiguration, AKeyThatIsOnlyBoundElsewhereIsFree) {
    for (const char* text : {
             "",
             "# bindsym Ctrl+Mod1+Left nop",
             "bindsym Ctrl+Left nop",
             "bindsym Ctrl+Mod1+Shift+Left nop",
             "bindsym Ctrl+Mod4+Left nop",
             "bindsym Ctrl+Mod1+KP_Left nop",
             "bindsym Ctrl+Mod1+Right+Left nop",
             "bindsym Ctrl+Mod1+113 nop",
             "bindcode Ctrl+Mod1+105 nop",
             "bindcode Ctrl+Mod1+Left nop",
             "bindsym Ctrl+$mod+Left nop",
             "set $mod Mod4\nbindsym Ctrl+$mod+Left nop",
             "mode \"resize\" {\n    bindsym Ctrl+Mod1+Left nop\n}",
             "mode \"resize\" {\n    bindsym {\n        Ctrl+Mod1+Left nop\n    }\n}",
             "mode resize bindsym Ctrl+Mod1+Left nop",
             "bar {\n    bindsym Ctrl+Mod1+Left nop\n}",
             "bindsym Ctrl+Mod1+Left nop\nunbindsym Mod1+Ctrl+left",
             "exec bindsym Ctrl+Mod1+Left nop",
             "bindsym",
             "bindsym Ctrl+Mod1+",
             "bindsym ++ nop",
             "set\nset $\nset $a\ninclude\nmode\nbindsym --to-code",
         }) {
        EXPECT_FALSE(isBound(text)) << text;
    }
}

TEST(SwayConfiguration, LettersAndDigitsGoByTheirPlaceOnAnAmericanKeyboard) {
    EXPECT_TRUE(isBound("bindsym Ctrl+Mod1+c nop", c));
    EXPECT_TRUE(isBound("bindsym Ctrl+Mod1+C nop", c));
    EXPECT_TRUE(isBound("bindcode Ctrl+Mod1+54 nop", c));
    EXPECT_FALSE(isBound("bindsym Ctrl+Mod1+v nop", c));
    EXPECT_TRUE(isBound("bindsym Mod4+1 workspace 1", one, command));
    EXPECT_TRUE(isBound("bindsym Mod4+Shift+exclam nop", one, command | shift));
    // Keys by key code do not count as keys by name.
    EXPECT_FALSE(isBound("bindcode Mod4+1 nop", one, command));
}

TEST(SwayConfiguration, LocksAreNotHeldDown) {
    EXPECT_TRUE(isBound("bindsym Lock+Ctrl+Mod1+Left nop"));
    EXPECT_TRUE(isBound("bindsym Mod2+Ctrl+Mod1+Left nop"));
}

TEST(SwayConfiguration, LinesOfTheSameKeysAndOtherOptionsAreSeveral) {
    const auto use = [](const std::string& text) {
        const ConfiguredBindings bindings = read(text);
        const KeyUse found = useOf(bindings, *HotKeyCombination::of(left, control | option));
        return std::tuple(found.line == nullptr ? "" : found.line->command,
                          found.particular == nullptr ? "" : found.particular->command, found.isOnRelease);
    };
    using Use = std::tuple<std::string, std::string, bool>;
    for (const auto& [text, wanted] : {
             std::pair{"", Use{"", "", false}},
             {"bindsym Ctrl+Mod1+Left a", {"a", "", false}},
             {"bindsym --release Ctrl+Mod1+Left a", {"a", "", true}},
             {"bindsym --release Ctrl+Mod1+Left a\nbindcode Ctrl+Mod1+113 b", {"b", "", true}},
             {"bindsym --release Ctrl+Mod1+Left a\nbindsym Ctrl+Mod1+Left b", {"b", "", true}},
             {"bindsym --locked --no-repeat --inhibited Ctrl+Mod1+Left a", {"a", "", false}},
             {"bindsym --input-device=* Ctrl+Mod1+Left a", {"a", "", false}},
             {"bindsym --input-device=1:1:k Ctrl+Mod1+Left a", {"a", "a", false}},
             {"bindsym Ctrl+Mod1+Left a\nbindsym Group2+Ctrl+Mod1+Left b", {"a", "b", false}},
             {"bindsym Ctrl+Mode_switch+Mod1+Left a", {"a", "a", false}},
             {"bindsym {\n  --release Ctrl+Mod1+Left a\n}", {"a", "", true}},
             {"bindsym --release Ctrl+Mod1+Left a\nunbindsym Ctrl+Mod1+Left", {"a", "", true}},
             {"bindsym --release Ctrl+Mod1+Left a\nunbindsym --release Ctrl+Mod1+Left", {"", "", false}},
             {"bindsym --to-code Ctrl+Mod1+Left a\nunbindsym Ctrl+Mod1+Left", {"a", "", false}},
             {"bindsym --to-code Ctrl+Mod1+Left a\nunbindsym --to-code Ctrl+Mod1+Left", {"", "", false}},
             {"bindsym Ctrl+Mod1+Left a\nunbindsym --no-warn Ctrl+Mod1+Left", {"", "", false}},
         }) {
        EXPECT_EQ(use(text), wanted) << text;
    }
}

TEST(SwayConfiguration, IncludedFilesAreReadWhereTheyAreNamed) {
    const std::map<std::string, std::string> texts{
        {"/home/user/.config/sway/keys", "bindsym $both+Left nop\ninclude more"},
        // A file that includes itself is read once.
        {"/home/user/.config/sway/more", "bindcode $both+54 nop\ninclude keys"},
    };
    const Includes includes = [&](const std::string& pattern, const std::string& folder) {
        std::vector<ConfigurationFile> files;
        if (const auto found = texts.find(folder + "/" + pattern); found != texts.end()) {
            files.push_back({.path = found->first, .text = found->second});
        }
        return files;
    };
    const auto bound = read("set $both Ctrl+Mod1\nset $name keys\ninclude $name\ninclude missing\n", includes);
    EXPECT_TRUE(bindingOf(bound, *HotKeyCombination::of(left, control | option)));
    EXPECT_TRUE(bindingOf(bound, *HotKeyCombination::of(c, control | option)));
}

TEST(SwayConfiguration, PatternsAreFoundOnTheDisk) {
    const TemporaryFolder folder;
    write(folder / "a.conf", "one");
    write(folder / "b.conf", "two");
    write(folder / "other", "three");
    const auto textsOf = [&](const std::string& pattern) {
        std::vector<std::string> texts;
        for (const ConfigurationFile& file : includedFiles(pattern, folder.path)) {
            texts.push_back(file.text);
        }
        return texts;
    };
    EXPECT_THAT(textsOf("*.conf"), ElementsAre("one", "two"));
    EXPECT_THAT(textsOf(folder / "other"), ElementsAre("three"));
    EXPECT_THAT(textsOf("missing/*"), IsEmpty());
    EXPECT_THAT(textsOf("other a.conf"), ElementsAre("three"));
    // A command is not run.
    EXPECT_THAT(textsOf("$(touch " + folder / "made" + ")"), IsEmpty());
    EXPECT_THAT(namesIn(folder.path), ElementsAre("a.conf", "b.conf", "other"));
}

TEST(SwayConfiguration, HostileTextsTakeNoTime) {
    std::string doubling = "set $a xxxxxxxxxxxxxxxx\n";
    for (char name = 'a'; name < 'z'; ++name) {
        doubling += std::string("set $") + static_cast<char>(name + 1) + " $" + name + "$" + name + "\n";
    }
    doubling += "bindsym $z nop\n";
    EXPECT_THAT(read(doubling), testing::SizeIs(1));

    std::string names;
    for (int number = 0; number < 5000; ++number) {
        names += "set $name" + std::to_string(number) + " Mod1\n";
    }
    EXPECT_THAT(read(names + "bindsym " + std::string(4000, '$') + " nop\n"), testing::SizeIs(1));
    EXPECT_THAT(read("bindsym " + std::string(1'000'000, '+')), IsEmpty());
    EXPECT_THAT(read(std::string(1'000'000, '\\')), IsEmpty());
    std::string blocks;
    for (int number = 0; number < 100'000; ++number) {
        blocks += "bindsym {\n";
    }
    std::string lines;
    for (int number = 0; number < 100'000; ++number) {
        lines += "Left nop\n";
    }
    EXPECT_THAT(read(blocks + lines), testing::SizeIs(1));
}

TEST(SwayHotKeyCombination, IsNamedByModifiersAndNumber) {
    EXPECT_EQ(HotKeyCombination::of(left, control | option)->text(), "Ctrl+Mod1+113");
    EXPECT_EQ(HotKeyCombination::of(c, command | shift)->text(), "Mod4+Shift+54");
    EXPECT_EQ(HotKeyCombination::of(200, control), std::nullopt);
}

} // namespace
} // namespace platform::i3ipc
