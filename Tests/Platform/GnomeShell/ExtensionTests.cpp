#include "Platform/GnomeShell/Extension.h"
#include "Platform/GnomeShell/Protocol.h"
#include "Platform/ShellCore/Protocol.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace platform::gnomeshell {
namespace {

using namespace shellcore;

namespace fs = std::filesystem;
using Kind = AccessObstacle::Kind;

class TheExtension : public ShellTest {
protected:
    TheExtension() {
        put(folder / "source/legacy", "new");
        put(folder / "source/esm", "new");
        setVersion("43.9", [](sd_bus_message* call) { sd_bus_reply_method_return(call, "v", "b", 1); });
        shell->answerWith("EnableExtension", "b", 1);
    }

    static void put(const std::string& place, const std::string& revision) {
        fs::create_directories(place);
        write(place + "/metadata.json", R"({"version-name": "1.0", "revision": ")" + revision + R"("})");
        write(place + "/extension.js", revision + " script");
    }

    /// The shell's version, and its reply for the one other requested property, a switch.
    void setVersion(const std::string& version, FakeShell::Answer generalSwitch) {
        shell->answer("Get", [version, generalSwitch = std::move(generalSwitch)](sd_bus_message* call) {
            const char* interface = nullptr;
            const char* property = nullptr;
            sd_bus_message_read(call, "ss", &interface, &property);
            if (std::string_view(property) == "ShellVersion") {
                sd_bus_reply_method_return(call, "v", "s", version.c_str());
            } else {
                generalSwitch(call);
            }
        });
    }

    void setState(double state, const std::string& revision = "new") {
        shell->answer("GetExtensionInfo", [=](sd_bus_message* call) {
            sd_bus_reply_method_return(call, "a{sv}", 3, "uuid", "s", "x", "state", "d", state, "revision", "s",
                                       revision.c_str());
        });
    }

    /// Returns after the one request for the extension's state that its arrival causes.
    void openTheLink(const std::string& session = "first") {
        const auto questions = [&] {
            const auto calls = shell->calls();
            return std::ranges::count(calls, "GetExtensionInfo tessel@corvid.org");
        };
        const auto before = questions();
        shell->setCore(true, session);
        ASSERT_TRUE(until([&] { return link->isOpen() && questions() > before; }));
        catchUp();
    }

    void refuseHello(const char* error, const char* message) {
        shell->answer("Hello", [=](sd_bus_message* call) { sd_bus_reply_method_errorf(call, error, "%s", message); });
    }

    /// Waits for the shell's word.
    std::optional<Kind> reportedObstacle() {
        EXPECT_TRUE(until([&] { return present() != Kind::silentCompositor; }));
        return present();
    }

    [[nodiscard]] std::optional<Kind> present() const {
        return extension.obstacle().transform([](const AccessObstacle& obstacle) { return obstacle.kind; });
    }

    TemporaryFolder folder;
    std::string place = folder / "home/gnome-shell/extensions/tessel@corvid.org";
    std::string installed = place + "/extension.js";
    std::string stateFolder = folder / "state";
    Extension extension{*link, ExtensionFiles(folder / "source", {folder / "home"}), ExtensionRecord(stateFolder)};
};

TEST_F(TheExtension, WorksWhereItAnswers) {
    shell->setCore(true);
    link->await(soon());
    EXPECT_EQ(extension.obstacle(), std::nullopt);
}

TEST_F(TheExtension, StandsAsTheShellSays) {
    for (const auto& [number, kind] : {std::pair(2.0, Kind::extensionOff),
                                       {6.0, Kind::extensionOff},
                                       {3.0, Kind::extensionRefused},
                                       {4.0, Kind::extensionRefused},
                                       {1.0, Kind::extensionNotLoaded}}) {
        setState(number);
        shell->setCore(true, "again");
        ASSERT_TRUE(until([&] { return link->isOpen(); }));
        shell->setCore(false);
        ASSERT_TRUE(until([&] { return !link->isOpen(); }));
        EXPECT_EQ(reportedObstacle(), kind) << number;
    }
}

TEST_F(TheExtension, AnnouncesWhatTheShellSays) {
    std::vector<std::optional<Kind>> announced;
    extension.onChange([&] { announced.push_back(present()); });
    setState(2);
    link->await(soon());
    EXPECT_TRUE(until([&] { return announced == std::vector<std::optional<Kind>>{Kind::extensionOff}; }));
}

TEST_F(TheExtension, IsSwitchedOnWhereTheShellHasIt) {
    setState(6);
    link->await(soon());
    EXPECT_EQ(reportedObstacle(), Kind::extensionOff);
    EXPECT_FALSE(shell->wasCalled("EnableExtension tessel@corvid.org")) << "before anybody asked for it";
    extension.switchOn();
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
    EXPECT_FALSE(fs::exists(installed));
}

TEST_F(TheExtension, StaysOffAtTheStartWhereItWorkedBefore) {
    ExtensionRecord(stateFolder).noteThatItWorked();
    setState(2);
    extension.switchOn();
    link->await(soon());
    EXPECT_EQ(reportedObstacle(), Kind::extensionOff);
    catchUp();
    EXPECT_FALSE(shell->wasCalled("EnableExtension tessel@corvid.org"));
    extension.switchOn();
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
}

TEST_F(TheExtension, IsSwitchedOnByTheFirstRequestAfterItWorked) {
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_TRUE(ExtensionRecord(stateFolder).hasItWorked());
    setState(2);
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    extension.switchOn();
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
}

TEST_F(TheExtension, WorksWhereNothingCanBeRecorded) {
    write(stateFolder, "a file, where a folder should be");
    shell->setCore(true);
    EXPECT_TRUE(until([&] { return !extension.obstacle(); }));
    EXPECT_FALSE(ExtensionRecord(stateFolder).hasItWorked());
    EXPECT_FALSE(ExtensionRecord(std::nullopt).hasItWorked());
}

TEST_F(TheExtension, IsSwitchedOnAlsoWhereTheShellIsAskedAgainMeanwhile) {
    setState(6);
    link->await(soon());
    linux::OwnedMessage held;
    setVersion("43.9", [&](sd_bus_message* call) { held.reset(sd_bus_message_ref(call)); });
    extension.switchOn();
    ASSERT_TRUE(until([&] { return shell->wasCalled("Get org.gnome.Shell.Extensions UserExtensionsEnabled"); }));

    // The object there now is not the extension either.
    shell->answerWithText("Hello", R"({"version":99,"session":"x","windows":[],"outputs":[]})");
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->obstacle() == ShellLink::Obstacle::otherVersion; }));
    EXPECT_EQ(reportedObstacle(), Kind::extensionOff);
    shell->run([&] { sd_bus_reply_method_return(held.get(), "v", "b", 1); });
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
    shell->run([&] { held.reset(); });
}

TEST_F(TheExtension, IsInstalledWhereTheShellDoesNotKnowIt) {
    shell->answerWith("GetExtensionInfo", "a{sv}", 0);
    link->await(soon());
    EXPECT_EQ(reportedObstacle(), Kind::extensionNotLoaded);
    EXPECT_FALSE(fs::exists(installed)) << "before anybody asked for it";
    extension.switchOn();
    EXPECT_TRUE(until([&] { return fs::exists(installed); }));
    EXPECT_FALSE(shell->wasCalled("EnableExtension tessel@corvid.org"));
}

TEST_F(TheExtension, IsReplacedWhereItIsOfAnotherVersion) {
    setState(1);
    shell->setCore(true);
    shell->answerWithText("Hello", R"({"version":99,"session":"x","windows":[],"outputs":[]})");
    link->await(soon());
    EXPECT_EQ(reportedObstacle(), Kind::extensionNotLoaded);
    extension.switchOn();
    EXPECT_TRUE(until([&] { return fs::exists(installed); }));
}

TEST_F(TheExtension, IsReplacedInTheHomeWhereTheShellFindsItOutOfDate) {
    constexpr double outOfDate = 4;
    put(place, "old");
    setState(outOfDate, "old");
    link->await(soon());
    EXPECT_EQ(reportedObstacle(), Kind::extensionNotLoaded);
    EXPECT_EQ(contentsOf(installed), "new script") << "without being asked to";

    // The shell refuses the very version that the next session would have: logging out would not help.
    setState(outOfDate, "new");
    extension.switchOn();
    EXPECT_TRUE(until([&] { return present() == Kind::extensionRefused; }));
}

TEST_F(TheExtension, IsInstalledInTheHomeWhereTheOneForAllIsOutOfDate) {
    setState(4, "everybody's");
    link->await(soon());
    EXPECT_EQ(reportedObstacle(), Kind::extensionRefused);
    EXPECT_FALSE(fs::exists(installed)) << "before anybody asked for it";
    extension.switchOn();
    EXPECT_TRUE(until([&] { return present() == Kind::extensionNotLoaded; }));
    EXPECT_TRUE(fs::exists(installed));
}

TEST_F(TheExtension, IsReplacedInTheHomeWhileAnOlderOneWorks) {
    put(place, "old");
    setState(1, "old");
    openTheLink();
    EXPECT_EQ(extension.obstacle(), std::nullopt);
    EXPECT_EQ(contentsOf(installed), "new script");
    EXPECT_NE(extension.caution().find("log out and in once"), std::string::npos);

    // The next session.
    setState(1, "new");
    openTheLink("second");
    EXPECT_EQ(extension.caution(), "");
}

TEST_F(TheExtension, IsNotInstalledWhereItWorks) {
    setState(1, "everybody's");
    openTheLink();
    EXPECT_FALSE(fs::exists(installed));
    EXPECT_EQ(extension.caution(), "");
}

TEST_F(TheExtension, SaysWhereItWorksInAShellThatItWasNotTriedIn) {
    setState(1);
    for (const auto& [version, caution] : {std::pair("43.9", ""),
                                           {"51.0", ""},
                                           {"51.rc", ""},
                                           {"52.alpha", "not tried on GNOME 52 yet"},
                                           {"60.1", "not tried on GNOME 60 yet"}}) {
        setVersion(version, nullptr);
        openTheLink(version);
        EXPECT_EQ(extension.caution(), caution) << version;
    }
}

TEST_F(TheExtension, SaysWhatAShellLacksThatItDoesNotFit) {
    setVersion("60.1", nullptr);
    setState(1);
    refuseHello(shellcore::Protocol::unusable, "Meta.Window.move_resize_frame, Main.wm.allowKeybinding");
    shell->setCore(true);
    EXPECT_EQ(reportedObstacle(), Kind::extensionUnfit);
    EXPECT_EQ(extension.obstacle(),
              (AccessObstacle{.kind = Kind::extensionUnfit,
                              .desktop = "GNOME Shell 60.1",
                              .detail = "Meta.Window.move_resize_frame, Main.wm.allowKeybinding"}));
    EXPECT_EQ(extension.caution(), "");
}

TEST_F(TheExtension, IsToBeLoadedAnewWhereOnlyTheOldOneDoesNotFit) {
    put(place, "old");
    setState(1, "old");
    refuseHello(shellcore::Protocol::unusable, "Meta.Window.move_resize_frame");
    shell->setCore(true);
    EXPECT_EQ(reportedObstacle(), Kind::extensionNotLoaded);
    EXPECT_EQ(contentsOf(installed), "new script");
}

TEST_F(TheExtension, ReportsThatAnotherClientHasItsServices) {
    setState(1);
    refuseHello(shellcore::Protocol::denied, "This object serves Tessel only");
    shell->setCore(true);
    EXPECT_EQ(reportedObstacle(), Kind::busNameTaken);
    EXPECT_EQ(extension.obstacle()->detail, shellcore::Protocol::busName);
    shell->answer("Hello", nullptr);
    openTheLink("after the other has left");
    EXPECT_EQ(extension.obstacle(), std::nullopt);
}

TEST_F(TheExtension, IsLeftAloneWhereTheShellAnswersNonsense) {
    for (const auto& answer : std::vector<FakeShell::Answer>{
             [](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", "on"); },
             [](sd_bus_message* call) { sd_bus_reply_method_return(call, "a{sv}", 1, "state", "s", "on"); },
             [](sd_bus_message* call) { sd_bus_reply_method_return(call, ""); }}) {
        shell->answer("GetExtensionInfo", answer);
        link->await(soon());
        EXPECT_EQ(reportedObstacle(), Kind::extensionNotLoaded);
    }
    shell->answer("GetExtensionInfo", [](sd_bus_message* /*call*/) {});
    extension.switchOn();
    catchUp();
    EXPECT_FALSE(fs::exists(installed));
}

} // namespace
} // namespace platform::gnomeshell
