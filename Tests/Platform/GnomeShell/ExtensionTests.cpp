#include "Platform/GnomeShell/Extension.h"
#include "Tests/Platform/GnomeShell/ShellFixture.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <filesystem>
#include <string>

namespace platform::gnomeshell {
namespace {

namespace fs = std::filesystem;
using State = Extension::State;

class TheExtension : public ShellTest {
protected:
    TheExtension() {
        fs::create_directories(folder / "source/legacy");
        write(folder / "source/legacy/metadata.json", "description");
        write(folder / "source/legacy/extension.js", "script");
        // The only property that is asked for but the version is a switch.
        shell->answer("Get", [](sd_bus_message* call) {
            const char* interface = nullptr;
            const char* property = nullptr;
            sd_bus_message_read(call, "ss", &interface, &property);
            if (std::string_view(property) == "ShellVersion") {
                sd_bus_reply_method_return(call, "v", "s", "43.9");
            } else {
                sd_bus_reply_method_return(call, "v", "b", 1);
            }
        });
        shell->answerWith("EnableExtension", "b", 1);
    }

    void setState(double state) {
        shell->answerWith("GetExtensionInfo", "a{sv}", 2, "uuid", "s", "x", "state", "d", state);
    }

    /// Waits for the shell's word.
    State stateTold() {
        EXPECT_TRUE(until([&] { return extension.state() != State::unknown; }));
        return extension.state();
    }

    TemporaryFolder folder;
    std::string installed = folder / "home/gnome-shell/extensions/tessel@corvid.org/extension.js";
    std::string stateFolder = folder / "state";
    Extension extension{loop, *link, ExtensionFiles(folder / "source", {folder / "home"}),
                        ExtensionRecord(stateFolder)};
};

TEST_F(TheExtension, WorksWhereItAnswers) {
    shell->setExtension(true);
    link->await(soon());
    EXPECT_EQ(extension.state(), State::working);
}

TEST_F(TheExtension, StandsAsTheShellSays) {
    for (const auto& [number, state] : {std::pair(2.0, State::switchedOff),
                                        {6.0, State::switchedOff},
                                        {3.0, State::refused},
                                        {4.0, State::refused},
                                        {1.0, State::notLoaded}}) {
        setState(number);
        shell->setExtension(true, "again");
        ASSERT_TRUE(until([&] { return link->isOpen(); }));
        shell->setExtension(false);
        ASSERT_TRUE(until([&] { return !link->isOpen(); }));
        EXPECT_EQ(stateTold(), state) << number;
    }
}

TEST_F(TheExtension, IsSwitchedOnWhereTheShellHasIt) {
    setState(6);
    link->await(soon());
    EXPECT_EQ(stateTold(), State::switchedOff);
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
    EXPECT_EQ(stateTold(), State::switchedOff);
    catchUp();
    EXPECT_FALSE(shell->wasCalled("EnableExtension tessel@corvid.org"));
    extension.switchOn();
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
}

TEST_F(TheExtension, IsSwitchedOnByTheFirstRequestAfterItWorked) {
    shell->setExtension(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_TRUE(ExtensionRecord(stateFolder).hasItWorked());
    setState(2);
    shell->setExtension(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    extension.switchOn();
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
}

TEST_F(TheExtension, WorksWhereNothingCanBeRecorded) {
    write(stateFolder, "a file, where a folder should be");
    shell->setExtension(true);
    EXPECT_TRUE(until([&] { return extension.state() == State::working; }));
    EXPECT_FALSE(ExtensionRecord(stateFolder).hasItWorked());
    EXPECT_FALSE(ExtensionRecord(std::nullopt).hasItWorked());
}

TEST_F(TheExtension, IsSwitchedOnAlsoWhereTheShellIsAskedAgainMeanwhile) {
    setState(6);
    link->await(soon());
    linux::OwnedMessage held;
    shell->answer("Get", [&](sd_bus_message* call) { held.reset(sd_bus_message_ref(call)); });
    extension.switchOn();
    ASSERT_TRUE(until([&] { return shell->wasCalled("Get org.gnome.Shell.Extensions UserExtensionsEnabled"); }));

    // Something else is there now that is not the extension either.
    shell->answerWithText("Hello", R"({"version":99,"session":"x","windows":[],"outputs":[]})");
    shell->setExtension(true);
    ASSERT_TRUE(until([&] { return link->obstacle() == ShellLink::Obstacle::otherVersion; }));
    EXPECT_EQ(stateTold(), State::switchedOff);
    shell->run([&] { sd_bus_reply_method_return(held.get(), "v", "b", 1); });
    EXPECT_TRUE(until([&] { return shell->wasCalled("EnableExtension tessel@corvid.org"); }));
    shell->run([&] { held.reset(); });
}

TEST_F(TheExtension, IsInstalledWhereTheShellDoesNotKnowIt) {
    shell->answerWith("GetExtensionInfo", "a{sv}", 0);
    link->await(soon());
    EXPECT_EQ(stateTold(), State::notLoaded);
    EXPECT_FALSE(fs::exists(installed)) << "before anybody asked for it";
    extension.switchOn();
    EXPECT_TRUE(until([&] { return fs::exists(installed); }));
    EXPECT_FALSE(shell->wasCalled("EnableExtension tessel@corvid.org"));
}

TEST_F(TheExtension, IsReplacedWhereItIsOfAnotherVersion) {
    setState(1);
    shell->setExtension(true);
    shell->answerWithText("Hello", R"({"version":99,"session":"x","windows":[],"outputs":[]})");
    link->await(soon());
    EXPECT_EQ(stateTold(), State::notLoaded);
    extension.switchOn();
    EXPECT_TRUE(until([&] { return fs::exists(installed); }));
}

TEST_F(TheExtension, IsLeftAloneWhereTheShellAnswersNonsense) {
    for (const auto& answer : std::vector<FakeShell::Answer>{
             [](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", "on"); },
             [](sd_bus_message* call) { sd_bus_reply_method_return(call, "a{sv}", 1, "state", "s", "on"); },
             [](sd_bus_message* call) { sd_bus_reply_method_return(call, ""); }}) {
        shell->answer("GetExtensionInfo", answer);
        link->await(soon());
        EXPECT_EQ(stateTold(), State::notLoaded);
    }
    shell->answer("GetExtensionInfo", [](sd_bus_message* /*call*/) {});
    extension.switchOn();
    catchUp();
    EXPECT_FALSE(fs::exists(installed));
}

} // namespace
} // namespace platform::gnomeshell
