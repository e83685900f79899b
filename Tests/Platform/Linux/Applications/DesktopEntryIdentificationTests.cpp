#include "Platform/Linux/Applications/DesktopEntryIdentification.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform::linux {
namespace {

using namespace std::string_view_literals;

/// Applications in two folders, and processes in an imitation of /proc.
struct DesktopEntryIdentificationTest : testing::Test {
    void add(const std::string& identifier, std::string_view lines = "") const {
        install(folder / "applications/" + identifier + ".desktop", lines);
    }

    void addLater(const std::string& identifier, std::string_view lines = "") const {
        install(folder / "more/" + identifier + ".desktop", lines);
    }

    void process(std::string_view file, std::string_view contents) const {
        writeBelow(folder / "proc/7/" + std::string(file), contents);
    }

    void program(const std::string& path, std::string_view commandLine = "") const {
        process("cmdline", commandLine);
        std::filesystem::remove(folder / "proc/7/exe");
        std::filesystem::create_symlink(path, folder / "proc/7/exe");
    }

    void scope(const std::string& unit) const {
        process("cgroup", "0::/user.slice/user-1.slice/user@1.service/app.slice/" + unit + "\n");
    }

    /// Empty if no application is identified.
    [[nodiscard]] std::string identify(const ApplicationClues& clues) {
        return identification.bundleIdentifier(clues).value_or("");
    }

    [[nodiscard]] std::string identifyClass(const std::string& windowClass, const std::string& instance = "") {
        return identify({.applicationId = {}, .windowClass = windowClass, .windowInstance = instance});
    }

    [[nodiscard]] std::string identifyId(const std::string& applicationId) {
        return identify({.applicationId = applicationId, .windowClass = {}, .windowInstance = {}});
    }

    [[nodiscard]] std::string identifyProcess() {
        return identify({.process = 7, .applicationId = {}, .windowClass = {}, .windowInstance = {}});
    }

    TemporaryFolder folder;
    MainLoop loop;
    DesktopEntries entries{
        loop, {.folders = {folder / "applications", folder / "more"}, .currentDesktops = {}, .searchPath = ""}};
    DesktopEntryIdentification identification{entries, folder / "proc"};
};

TEST_F(DesktopEntryIdentificationTest, KnowsAFlatpakByItsSandbox) {
    add("org.example.Editor", "X-Flatpak=org.example.Editor\nExec=/usr/bin/flatpak run org.example.Editor");
    add("editor", "StartupWMClass=Editor\nExec=editor");
    process("root/.flatpak-info", "[Application]\nname=org.example.Editor\n");
    program("/app/bin/editor");
    EXPECT_EQ(identify({.process = 7, .applicationId = "editor", .windowClass = "Editor", .windowInstance = "editor"}),
              "org.example.Editor");

    process("root/.flatpak-info", "[Application]\nname=org.example.Unknown\n");
    EXPECT_EQ(identify({.process = 7, .applicationId = "editor", .windowClass = "Editor", .windowInstance = "editor"}),
              "")
        << "an application outside bears the same names";
}

TEST_F(DesktopEntryIdentificationTest, DistinguishesTheApplicationsOfOneSandboxByTheirWindows) {
    add("org.example.Office", "X-Flatpak=org.example.Office");
    add("org.example.Office.writer", "X-Flatpak=org.example.Office\nStartupWMClass=office-writer");
    process("root/.flatpak-info", "[Application]\nname=org.example.Office\n");
    EXPECT_EQ(identify({.process = 7, .applicationId = {}, .windowClass = "office-writer", .windowInstance = "office"}),
              "org.example.Office.writer");
    EXPECT_EQ(identify({.process = 7, .applicationId = {}, .windowClass = "other", .windowInstance = "other"}),
              "org.example.Office");
}

TEST_F(DesktopEntryIdentificationTest, KnowsASnapByItsLabel) {
    add("browser", "StartupWMClass=Browser\nExec=browser");
    add("browser_browser", "X-SnapInstanceName=browser\nExec=env A=1 /snap/bin/browser");
    add("browser_private", "X-SnapInstanceName=browser\nNoDisplay=true");
    process("attr/current", "snap.browser.browser (enforce)\n");
    EXPECT_EQ(identify({.process = 7, .applicationId = {}, .windowClass = "Browser", .windowInstance = "browser"}),
              "browser_browser");
    process("attr/current", "snap.browser.hook.configure (enforce)\n");
    EXPECT_EQ(identifyProcess(), "browser_browser") << "the one that is listed";
    process("attr/current", "snap.other.browser (enforce)\n");
    EXPECT_EQ(identifyProcess(), "");
}

TEST_F(DesktopEntryIdentificationTest, BelievesAUnitThatTheProgramOrTheWindowConfirms) {
    add("org.example.Terminal", "Exec=terminal\nStartupWMClass=Terminal");
    scope("app-gnome-org.example.Terminal-12.scope");
    program("/usr/bin/terminal");
    EXPECT_EQ(identifyProcess(), "org.example.Terminal");
    program("/usr/libexec/terminal-server");
    EXPECT_EQ(identifyProcess(), "");
    EXPECT_EQ(identify({.process = 7, .applicationId = {}, .windowClass = "terminal", .windowInstance = ""}),
              "org.example.Terminal");
}

TEST_F(DesktopEntryIdentificationTest, DoesNotTakeAProgramForTheTerminalThatItWasStartedFrom) {
    add("org.example.Terminal", "Exec=terminal\nStartupWMClass=Terminal");
    add("paint", "Exec=paint");
    scope("app-gnome-org.example.Terminal-12.scope");
    program("/usr/bin/paint");
    EXPECT_EQ(identify({.process = 7, .applicationId = {}, .windowClass = "Paint", .windowInstance = "paint"}),
              "paint");
    program("/home/me/unknown");
    EXPECT_EQ(identify({.process = 7, .applicationId = {}, .windowClass = "Unknown", .windowInstance = "unknown"}), "");
}

TEST_F(DesktopEntryIdentificationTest, KnowsTheIdThatAToolkitPutsOnTheWindow) {
    add("org.example.Editor");
    add("org.example.viewer", "StartupWMClass=Picture-Viewer");
    add("Org.Example.Viewer");
    EXPECT_EQ(identifyId("org.example.Editor"), "org.example.Editor");
    EXPECT_EQ(identifyId("ORG.EXAMPLE.EDITOR"), "org.example.Editor");
    EXPECT_EQ(identifyId("org.example.Editor.desktop"), "org.example.Editor");
    EXPECT_EQ(identifyId("/usr/share/applications/org.example.Editor.desktop"), "org.example.Editor");
    EXPECT_EQ(identifyId("org.example.viewer"), "org.example.viewer");
    EXPECT_EQ(identifyId("Org.Example.Viewer"), "Org.Example.Viewer");
    EXPECT_EQ(identifyId("picture-viewer"), "org.example.viewer");
    EXPECT_EQ(identifyId("editor"), "org.example.Editor");
    EXPECT_EQ(identifyId("viewer"), "") << "two end so";
    EXPECT_EQ(identifyId("com.other.Editor"), "");
    EXPECT_EQ(identifyId(""), "");
    EXPECT_EQ(identifyId("/"), "");
    EXPECT_EQ(identifyId(".desktop"), "");
}

TEST_F(DesktopEntryIdentificationTest, KnowsTheClassOfAWindow) {
    add("debian-xterm", "Exec=xterm\nStartupWMClass=XTerm");
    add("debian-uxterm", "Exec=uxterm\nStartupWMClass=UXTerm");
    add("org.example.mousepad", "Exec=mousepad");
    add("gimp-2", "StartupWMClass=Gimp-2");
    add("Alpha");
    EXPECT_EQ(identifyClass("XTerm", "xterm"), "debian-xterm");
    EXPECT_EQ(identifyClass("UXTerm", "xterm"), "debian-uxterm");
    EXPECT_EQ(identifyClass("Mousepad", "mousepad"), "org.example.mousepad");
    EXPECT_EQ(identifyClass("GIMP-2"), "gimp-2");
    EXPECT_EQ(identifyClass("alpha"), "Alpha");
    EXPECT_EQ(identifyClass("Other", "alpha"), "Alpha");
    EXPECT_EQ(identifyClass("Other", "xterm"), "debian-xterm");
    EXPECT_EQ(identifyClass("Other", "mousepad"), "") << "an instance is too weak a clue";
    EXPECT_EQ(identifyClass("", ""), "");
}

TEST_F(DesktopEntryIdentificationTest, DistinguishesWebApplicationsFromTheirBrowser) {
    add("browser", "Exec=/usr/bin/browser %U\nStartupWMClass=Browser");
    add("browser-mail", "Exec=/usr/bin/browser --app-id=mail\nStartupWMClass=crx_mail");
    program("/usr/bin/browser");
    EXPECT_EQ(identifyClass("Browser", "crx_mail"), "browser-mail");
    EXPECT_EQ(identifyClass("Browser", "browser"), "browser");
    EXPECT_EQ(identifyProcess(), "browser");
}

TEST_F(DesktopEntryIdentificationTest, PrefersAnExactClassToOneInOtherLetters) {
    add("aa", "StartupWMClass=tool");
    add("bb", "StartupWMClass=Tool");
    EXPECT_EQ(identifyClass("Tool"), "bb");
    EXPECT_EQ(identifyClass("tool"), "aa");
    EXPECT_EQ(identifyClass("TOOL"), "aa");
}

TEST_F(DesktopEntryIdentificationTest, ChoosesAmongEntriesThatFitAlike) {
    addLater("b", "StartupWMClass=Tool");
    EXPECT_EQ(identifyClass("Tool"), "b");
    add("hidden", "StartupWMClass=Tool\nNoDisplay=true");
    EXPECT_EQ(identifyClass("Tool"), "b") << "one that is listed before one that is not";
    add("longer-name", "StartupWMClass=Tool");
    EXPECT_EQ(identifyClass("Tool"), "longer-name") << "the first folder before the second";
    add("name", "StartupWMClass=Tool");
    EXPECT_EQ(identifyClass("Tool"), "name") << "the shorter id";
    add("eman", "StartupWMClass=Tool");
    EXPECT_EQ(identifyClass("Tool"), "eman") << "the alphabet";
}

TEST_F(DesktopEntryIdentificationTest, KnowsTheProgram) {
    add("office-writer", "Exec=office --writer %U");
    add("office", "Exec=office %U");
    add("own-tool", "Exec=/opt/own/tool");
    add("tool", "Exec=tool");
    add("helper", "Exec=pkexec helper --gui\nTryExec=/usr/sbin/helper");
    add("sandboxed", "Exec=/usr/bin/flatpak run a\nX-Flatpak=a");
    add("monitor", "Exec=monitor\nTerminal=true");
    const auto identifyProgram = [&](const std::string& path) {
        program(path);
        return identifyProcess();
    };
    EXPECT_EQ(identifyProgram("/usr/lib/office/office"), "office") << "the entry of the whole program";
    EXPECT_EQ(identifyProgram("/opt/own/tool"), "own-tool");
    EXPECT_EQ(identifyProgram("/usr/bin/tool"), "tool");
    EXPECT_EQ(identifyProgram("/usr/sbin/helper (deleted)"), "helper");
    EXPECT_EQ(identifyProgram("/usr/bin/flatpak"), "") << "starts many applications";
    EXPECT_EQ(identifyProgram("/usr/bin/monitor"), "") << "shows itself in a terminal";
    EXPECT_EQ(identifyProgram("/usr/bin/unknown"), "");
}

TEST_F(DesktopEntryIdentificationTest, KnowsTheScriptThatAnInterpreterReads) {
    add("printer", "Exec=python3 /usr/share/printer/printer.py");
    add("printer2", "Exec=printer2.py");
    add("python", "Exec=python3.11");
    program("/usr/bin/python3.11", "python3\0/usr/share/printer/printer.py\0"sv);
    EXPECT_EQ(identifyProcess(), "printer");
    program("/usr/bin/python3.11", "/usr/bin/python3\0/usr/bin/printer2.py\0x\0"sv);
    EXPECT_EQ(identifyProcess(), "printer2");
    program("/usr/bin/python3.11", "python3\0/home/me/other.py\0"sv);
    EXPECT_EQ(identifyProcess(), "") << "is no mere Python";
    program("/usr/bin/python3.11", "python3\0"sv);
    EXPECT_EQ(identifyProcess(), "python");
}

TEST_F(DesktopEntryIdentificationTest, TrustsTheWindowAloneWhereTheProcessIsUnknown) {
    add("tool", "Exec=tool");
    program("/usr/bin/tool");
    for (const ProcessIdentifier process : {0, -7}) {
        EXPECT_EQ(identify({.process = process, .applicationId = {}, .windowClass = {}, .windowInstance = {}}), "");
        EXPECT_EQ(identify({.process = process, .applicationId = {}, .windowClass = "Tool", .windowInstance = {}}),
                  "tool");
    }
    EXPECT_EQ(identify({.process = 99, .applicationId = {}, .windowClass = "Tool", .windowInstance = {}}), "tool");
}

TEST_F(DesktopEntryIdentificationTest, KnowsApplicationsThatAreInstalledMeanwhile) {
    EXPECT_EQ(identifyClass("Tool"), "");
    add("tool");
    EXPECT_EQ(identifyClass("Tool"), "tool");
}

TEST_F(DesktopEntryIdentificationTest, IsNotLedAstrayByAnyText) {
    add("tool", "Exec=tool\nStartupWMClass=Tool");
    const bool isOk =
        rc::check("any clues give the entry or nothing", [&](const std::string& id, const std::string& windowClass,
                                                             const std::string& instance) {
            const std::string found =
                identify({.process = 0, .applicationId = id, .windowClass = windowClass, .windowInstance = instance});
            RC_ASSERT(found.empty() || found == "tool");
        });
    EXPECT_TRUE(isOk);
    EXPECT_EQ(identifyClass(std::string(1'000'000, 'T')), "");
    EXPECT_EQ(identifyId("\xff\xfe/\xff"), "");
}

} // namespace
} // namespace platform::linux
