#include "Platform/Linux/Applications/ProcessFacts.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {
namespace {

using namespace std::string_view_literals;

TEST(ProcessFacts, FindTheApplicationInTheNameOfAUnit) {
    struct Case {
        std::string unit;
        std::optional<std::string> expected;
    };
    const std::vector<Case> cases{
        {"app-org.example.Editor-1234.scope", "org.example.Editor"},
        {"app-gnome-org.example.Editor-1234.scope", "org.example.Editor"},
        {R"(app-gnome-firefox\x2desr-4711.scope)", "firefox-esr"},
        {"app-org.example.Editor@1234.service", "org.example.Editor"},
        {"app-org.example.Editor.service", "org.example.Editor"},
        {R"(app-gnome-a\x2db@autostart.service)", "a-b"},
        {R"(app-a\x2-1.scope)", R"(a\x2)"},
        {R"(app-a\xzz-1.scope)", R"(a\xzz)"},
        {"app-1234.scope", std::nullopt},
        {"app.scope", std::nullopt},
        {"app-a-b-c-1234.scope", std::nullopt},
        {"app--1234.scope", std::nullopt},
        {"vte-spawn-1234.scope", std::nullopt},
        {"app-org.example.Editor-1234.slice", std::nullopt},
        {"session-2.scope", std::nullopt},
        {"", std::nullopt},
    };
    for (const Case& each : cases) {
        const std::string path = "/user.slice/user-1000.slice/user@1000.service/app.slice/" + each.unit;
        EXPECT_EQ(ProcessFacts::applicationOfUnit("0::" + path + "\n"), each.expected) << each.unit;
        EXPECT_EQ(ProcessFacts::applicationOfUnit("12:pids:/\n1:name=systemd:" + path), each.expected) << each.unit;
    }
}

TEST(ProcessFacts, FindUnitsOfTheUsersManagerOnly) {
    EXPECT_EQ(ProcessFacts::applicationOfUnit("0::/app-org.example.Editor-1.scope\n"), std::nullopt);
    EXPECT_EQ(ProcessFacts::applicationOfUnit("5:cpu:/user@1.service/app-a-1.scope\n"), std::nullopt);
    EXPECT_EQ(ProcessFacts::applicationOfUnit("0::/user@1.service/app.slice/app-a-1.scope/inner\n"), "a");
    EXPECT_EQ(ProcessFacts::applicationOfUnit(""), std::nullopt);
    EXPECT_EQ(ProcessFacts::applicationOfUnit("0::"), std::nullopt);
}

TEST(ProcessFacts, ReadTheLabelOfASnap) {
    using Snap = ProcessFacts::SnapApplication;
    EXPECT_EQ(ProcessFacts::snapOfLabel("snap.browser.browser (enforce)\n"), (Snap{"browser", "browser"}));
    EXPECT_EQ(ProcessFacts::snapOfLabel("snap.office.writer"), (Snap{"office", "writer"}));
    EXPECT_EQ(ProcessFacts::snapOfLabel("snap.office_two.writer\0"sv), (Snap{"office_two", "writer"}));
    EXPECT_EQ(ProcessFacts::snapOfLabel("snap.office.writer//inner (enforce)"), (Snap{"office", "writer"}));
    for (const char* label :
         {"unconfined\n", "", "snap.", "snap..a", "snap.a", "snap.a.", "snap-update-ns.a", "snap.a b.c"}) {
        EXPECT_EQ(ProcessFacts::snapOfLabel(label), std::nullopt) << label;
    }
}

TEST(ProcessFacts, SplitACommandLine) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(ProcessFacts::commandWords("a\0b\0"sv), (Words{"a", "b"}));
    EXPECT_EQ(ProcessFacts::commandWords("a\0b"sv), (Words{"a", "b"}));
    EXPECT_EQ(ProcessFacts::commandWords("a\0\0c\0"sv), (Words{"a", "", "c"}));
    EXPECT_EQ(ProcessFacts::commandWords("title without zeros"), (Words{"title without zeros"}));
    EXPECT_EQ(ProcessFacts::commandWords(""), Words{});
    EXPECT_EQ(ProcessFacts::commandWords("\0"sv), Words{});
}

RC_GTEST_PROP(ProcessFactsProperties, NoTextDoesHarm, (const std::string& text)) {
    static_cast<void>(ProcessFacts::applicationOfUnit("0::/user@1.service/" + text));
    static_cast<void>(ProcessFacts::applicationOfUnit(text));
    static_cast<void>(ProcessFacts::snapOfLabel("snap." + text));
    std::size_t length = 0;
    for (const std::string& word : ProcessFacts::commandWords(text)) {
        length += word.size();
    }
    RC_ASSERT(length <= text.size());
}

/// An imitation of /proc with one process in it.
struct ProcessFolder : testing::Test {
    void program(const std::string& path, std::string_view commandLine = "") const {
        writeBelow(process + "/cmdline", commandLine);
        std::filesystem::remove(process + "/exe");
        std::filesystem::create_symlink(path, process + "/exe");
    }

    [[nodiscard]] auto program() const { return ProcessFacts::program(folder.path, 7); }
    [[nodiscard]] auto flatpak() const { return ProcessFacts::flatpakApplication(folder.path, 7); }

    TemporaryFolder folder;
    std::string process = folder / "7";
};

using ProcessFactsTest = ProcessFolder;

TEST_F(ProcessFactsTest, NameTheProgramOrTheScriptThatItReads) {
    using Program = ProcessFacts::Program;
    program("/usr/bin/xterm", "whatever\0-e\0"sv);
    EXPECT_EQ(program(), (Program{.path = "/usr/bin/xterm", .script = ""}));
    program("/opt/editor (deleted)");
    EXPECT_EQ(program(), (Program{.path = "/opt/editor", .script = ""}));
    program("/usr/bin/python3.11", "python3\0/usr/share/tool/tool.py\0--x\0"sv);
    EXPECT_EQ(program(), (Program{.path = "", .script = "/usr/share/tool/tool.py"}));
    program("/usr/bin/python3.11", "python3\0-c\0print()\0"sv);
    EXPECT_EQ(program(), (Program{.path = "/usr/bin/python3.11", .script = ""}));
    program("/usr/lib/jvm/bin/java", "java\0-jar\0/opt/tool.jar\0"sv);
    EXPECT_EQ(program(), (Program{.path = "", .script = "/opt/tool.jar"}));
    program("/usr/bin/bash");
    EXPECT_EQ(program(), (Program{.path = "/usr/bin/bash", .script = ""}));
    program("memory of no file");
    EXPECT_EQ(program(), std::nullopt);
}

TEST_F(ProcessFactsTest, AreNotThereForAProcessThatIsNot) {
    EXPECT_EQ(program(), std::nullopt);
    EXPECT_EQ(flatpak(), std::nullopt);
    EXPECT_EQ(ProcessFacts::snapApplication(folder.path, 7), std::nullopt);
    EXPECT_EQ(ProcessFacts::scopeApplication(folder.path, 7), std::nullopt);
    for (const ProcessIdentifier process : {0, -1}) {
        writeBelow(folder / std::to_string(process) + "/root/.flatpak-info", "[Application]\nname=a\n");
        writeBelow(folder / std::to_string(process) + "/attr/current", "snap.a.b");
        EXPECT_EQ(ProcessFacts::flatpakApplication(folder.path, process), std::nullopt);
        EXPECT_EQ(ProcessFacts::snapApplication(folder.path, process), std::nullopt);
    }
}

TEST_F(ProcessFactsTest, NameTheFlatpakOfASandbox) {
    writeBelow(process + "/root/.flatpak-info", "[Application]\nname=org.example.Editor\nruntime=x\n");
    EXPECT_EQ(flatpak(), "org.example.Editor");
    for (const std::string_view contents : {""sv, "[Runtime]\nname=a\n"sv, "[Application]\nname=\n"sv, "name=a\n"sv}) {
        writeBelow(process + "/root/.flatpak-info", contents);
        EXPECT_EQ(flatpak(), std::nullopt) << contents;
    }
}

TEST_F(ProcessFactsTest, FollowNoLinkAndWaitForNoPipeInASandbox) {
    writeBelow(folder / "other", "[Application]\nname=org.example.Editor\n");
    std::filesystem::create_directories(process + "/root");
    std::filesystem::create_symlink(folder / "other", process + "/root/.flatpak-info");
    EXPECT_EQ(flatpak(), std::nullopt);
    std::filesystem::remove(process + "/root/.flatpak-info");
    ASSERT_EQ(::mkfifo((process + "/root/.flatpak-info").c_str(), 0600), 0);
    EXPECT_EQ(flatpak(), std::nullopt);
}

TEST_F(ProcessFactsTest, NameTheSnapOfEitherLabel) {
    writeBelow(process + "/attr/current", "snap.a.b (enforce)\n");
    EXPECT_EQ(ProcessFacts::snapApplication(folder.path, 7), (ProcessFacts::SnapApplication{"a", "b"}));
    writeBelow(process + "/attr/apparmor/current", "snap.c.d (enforce)\n");
    EXPECT_EQ(ProcessFacts::snapApplication(folder.path, 7), (ProcessFacts::SnapApplication{"c", "d"}));
}

TEST_F(ProcessFactsTest, DoNotReadOnForEver) {
    program("/usr/bin/python3", std::string(1'000'000, 'x'));
    ASSERT_TRUE(program());
    EXPECT_LE(program()->name().size(), 65536U);
}

TEST(ProcessFacts, NameTheProgramOfThisVeryProcess) {
    const auto program = ProcessFacts::program(std::string(ProcessFacts::standardFolder), ::getpid());
    ASSERT_TRUE(program);
    EXPECT_EQ(program->path, std::filesystem::read_symlink("/proc/self/exe"));
}

} // namespace
} // namespace platform::linux
