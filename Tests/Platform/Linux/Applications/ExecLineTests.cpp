#include "Platform/Linux/Applications/ExecLine.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

TEST(ExecLine, FindsTheStartedProgram) {
    struct Case {
        std::string line;
        std::optional<ExecLine::Program> expected;
    };
    const std::vector<Case> cases{
        {"xterm", {{"xterm", false}}},
        {"/usr/bin/editor %F", {{"/usr/bin/editor", false}}},
        {"office --writer %U", {{"office", true}}},
        {R"("/opt/Some Program/run me" %f)", {{"/opt/Some Program/run me", false}}},
        {R"("/opt/a\$b" x)", {{"/opt/a$b", true}}},
        {"/opt/100%%/run", {{"/opt/100%/run", false}}},
        {"env LANG=C GDK_BACKEND=x11 /snap/bin/browser %u", {{"/snap/bin/browser", false}}},
        {"/usr/bin/env -u DISPLAY -i A=1 program", {{"program", false}}},
        {"python3 /usr/share/tool/tool.py %f", {{"/usr/share/tool/tool.py", false}}},
        {"/usr/bin/python3.11 -W ignore -u tool.py --all", {{"tool.py", true}}},
        {"python3.11", {{"python3.11", false}}},
        {"java -Xmx1g -jar /opt/tool.jar", {{"/opt/tool.jar", false}}},
        {"sh -c 'cd /tmp && exec tool'", std::nullopt},
        {"python3 -m tool", std::nullopt},
        {"java org.example.Main", std::nullopt},
        {"sh %f", std::nullopt},
        {"env", std::nullopt},
        {"env A=1", std::nullopt},
        {"", std::nullopt},
        {"   ", std::nullopt},
        {"\"unfinished", std::nullopt},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(ExecLine::program(each.line), each.expected) << each.line;
    }
}

TEST(ExecLine, FindsTheFileThatAnInterpreterReads) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(ExecLine::script(Words{"/usr/bin/bash", "-l", "/home/me/start"}), "/home/me/start");
    EXPECT_EQ(ExecLine::script(Words{"/usr/bin/bash"}), "");
    EXPECT_EQ(ExecLine::script(Words{"/usr/bin/perl", "-e", "print 1", "file"}), "");
    EXPECT_EQ(ExecLine::script(Words{"java", "-jar"}), "");
    EXPECT_EQ(ExecLine::script(Words{"/usr/bin/xterm", "-e", "vi"}), std::nullopt);
    EXPECT_EQ(ExecLine::script(Words{"/opt/123"}), std::nullopt);
    EXPECT_EQ(ExecLine::script(Words{""}), std::nullopt);
    EXPECT_EQ(ExecLine::script({}), std::nullopt);
}

TEST(ExecLine, LeavesAnOrdinaryPathUnquoted) {
    EXPECT_EQ(ExecLine::quoted("/usr/bin/tessel"), "/usr/bin/tessel");
    EXPECT_EQ(ExecLine::quoted("/opt/A Place/tessel"), "\"/opt/A Place/tessel\"");
    EXPECT_EQ(ExecLine::quoted(R"(/a"b`c$d\e)"), R"("/a\"b\`c\$d\\e")");
    EXPECT_EQ(ExecLine::quoted("/opt/100%/tessel"), "/opt/100%%/tessel");
}

RC_GTEST_PROP(ExecLineProperties, AQuotedPathIsReadBackAsItWas, (const std::string& text)) {
    std::string path = "/" + text;
    std::erase(path, '\0');
    RC_ASSERT(ExecLine::program(ExecLine::quoted(path)) == (ExecLine::Program{.name = path}));
}

TEST(ExecLine, FindsProgramsInTheSearchPath) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "first");
    std::filesystem::create_directory(folder / "second");
    std::filesystem::create_directory(folder / "first/tool");
    write(folder / "first/data", "");
    for (const char* name : {"second/tool", "second/data"}) {
        write(folder / name, "");
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
    }
    const std::string searchPath = "relative::" + folder / "first" + ":" + folder / "second";

    EXPECT_EQ(ExecLine::locate("tool", searchPath), folder / "second/tool") << "a folder is no program";
    EXPECT_EQ(ExecLine::locate("data", searchPath), folder / "second/data") << "nor is a file that cannot be run";
    EXPECT_EQ(ExecLine::locate("other", searchPath), std::nullopt);
    EXPECT_EQ(ExecLine::locate("", searchPath), std::nullopt);
    EXPECT_EQ(ExecLine::locate(folder / "second/tool", ""), folder / "second/tool");
    EXPECT_EQ(ExecLine::locate(folder / "first/data", searchPath), std::nullopt);
}

} // namespace
} // namespace platform::linux
