#include "CorvidKit/AppInfo.h"
#include "CorvidKit/LoginItem.h"
#include "CorvidKit/MemoryFootprint.h"
#include "CorvidKit/SystemSettings.h"
#include "Platform/Seam/Desktop/LoginItemService.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using platform::LoginItemStatus;
using Lines = std::vector<std::string>;

class SystemServices : public testing::Test {
protected:
    platform::simulated::Desktop desktop;
};

TEST_F(SystemServices, TheVersionIsTheBundles) {
    EXPECT_EQ(AppInfo::version(), "1.2");
}

TEST_F(SystemServices, TheVersionOfABundleWithoutOneIsDev) {
    auto& info = desktop.mainBundle.infoDictionary;
    info.insert_or_assign("CFBundleShortVersionString", 12);
    EXPECT_EQ(AppInfo::version(), "dev");
    info.clear();
    EXPECT_EQ(AppInfo::version(), "dev");
}

TEST_F(SystemServices, ALoggerWritesUnderTheBundlesIdentifier) {
    AppInfo::logger("area").error("it broke");
    desktop.mainBundle.identifier.reset();
    AppInfo::logger("area").error("it broke");
    EXPECT_EQ(desktop.trace.take(),
              (Lines{"log error org.example.Tessel area: it broke", "log error org.corvid area: it broke"}));
}

TEST_F(SystemServices, TheLoginItemIsOnOnlyWhenItReallyIs) {
    for (const auto& [status, isEnabled] : {std::pair{LoginItemStatus::notRegistered, false},
                                            {LoginItemStatus::enabled, true},
                                            {LoginItemStatus::requiresApproval, false},
                                            {LoginItemStatus::notFound, false}}) {
        desktop.loginItemService.setStatus(status);
        EXPECT_EQ(LoginItem::isEnabled(), isEnabled) << static_cast<int>(status);
    }
}

TEST_F(SystemServices, TheLoginItemIsSwitchedOnAndOff) {
    EXPECT_TRUE(LoginItem::setEnabled(true));
    EXPECT_FALSE(LoginItem::setEnabled(false));
}

TEST_F(SystemServices, ALoginItemThatWaitsForApprovalIsOff) {
    desktop.loginItemService.requiresApproval = true;
    EXPECT_FALSE(LoginItem::setEnabled(true));
    EXPECT_EQ(desktop.trace.take("log"), Lines{}) << "which is no failure";
}

TEST_F(SystemServices, ALoginItemThatCannotBeChangedStaysAsItIsAndSaysSoInTheLog) {
    desktop.loginItemService.setStatus(LoginItemStatus::enabled);
    desktop.loginItemService.error = "the folder is read-only";
    EXPECT_TRUE(LoginItem::setEnabled(false));
    desktop.loginItemService.setStatus(LoginItemStatus::notRegistered);
    EXPECT_FALSE(LoginItem::setEnabled(true));
    const std::string complaint =
        "log error org.example.Tessel login-item: login item change failed: the folder is read-only";
    EXPECT_EQ(desktop.trace.take("log"), (Lines{complaint, complaint}));
}

const std::string newerKeyboardPage = "x-apple.systempreferences:com.apple.Keyboard-Settings.extension?Shortcuts";
const std::string olderKeyboardPage = "x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts";

TEST_F(SystemServices, EachPaneHasItsPage) {
    const std::string privacy = "open x-apple.systempreferences:com.apple.preference.security?Privacy_";
    SystemSettings::open(SystemSettings::Pane::accessibility);
    SystemSettings::open(SystemSettings::Pane::automation);
    SystemSettings::open(SystemSettings::Pane::screenRecording);
    EXPECT_EQ(desktop.trace.take(),
              (Lines{privacy + "Accessibility", privacy + "Automation", privacy + "ScreenCapture"}));
}

TEST_F(SystemServices, TheSecondPageIsOpenedOnlyWhereTheFirstIsRefused) {
    SystemSettings::open(SystemSettings::Pane::keyboardShortcuts);
    EXPECT_EQ(desktop.trace.take(), (Lines{"open " + newerKeyboardPage}));
    desktop.addressOpener.refuse(newerKeyboardPage);
    SystemSettings::open(SystemSettings::Pane::keyboardShortcuts);
    EXPECT_EQ(desktop.trace.take(), (Lines{"open " + newerKeyboardPage, "open " + olderKeyboardPage}));
    desktop.addressOpener.refuse(olderKeyboardPage);
    SystemSettings::open(SystemSettings::Pane::keyboardShortcuts);
    EXPECT_EQ(desktop.trace.take(), (Lines{"open " + newerKeyboardPage, "open " + olderKeyboardPage}))
        << "and nothing else happens";
}

TEST_F(SystemServices, TheMemoryFootprintIsTheKernels) {
    desktop.processInfo.use = {.current = 1'048'576, .peak = 1'572'864};
    const MemoryFootprint::Reading reading = MemoryFootprint::read();
    EXPECT_EQ(reading, (MemoryFootprint::Reading{.current = 1'048'576, .peak = 1'572'864}));
    EXPECT_EQ(reading.currentMB(), 1.0);
    EXPECT_EQ(reading.peakMB(), 1.5);
}

TEST_F(SystemServices, AnUnknownMemoryFootprintIsZero) {
    desktop.processInfo.use.reset();
    const MemoryFootprint::Reading reading = MemoryFootprint::read();
    EXPECT_EQ(reading, (MemoryFootprint::Reading{.current = 0, .peak = 0}));
    EXPECT_EQ(reading.currentMB(), 0.0);
    EXPECT_EQ(reading.peakMB(), 0.0);
}

} // namespace
} // namespace corvid
