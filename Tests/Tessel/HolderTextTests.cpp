#include "CorvidKitCore/KeyCode.h"
#include "Platform/Simulated/Localization.h"
#include "Tessel/HolderText.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tessel {
namespace {

using platform::KeyPurpose;
using platform::ShortcutHolder;

const corvid::Shortcut left{.keyCode = corvid::KeyCode::leftArrow,
                            .modifiers = corvid::Shortcut::control | corvid::Shortcut::option};

TEST(HolderText, IsOneSentenceOfKeysPurposeAndHolder) {
    const platform::simulated::Localization localization;
    EXPECT_EQ(holderText(left, {.heldBy = "GNOME", .purpose = KeyPurpose::workspaceOnTheLeft}, localization),
              "Ctrl+Alt+← switches to the workspace on the left (GNOME)");
    EXPECT_EQ(holderText(left, {.heldBy = "KWin", .purpose = "Switch One Desktop to the Left"}, localization),
              "Ctrl+Alt+←: Switch One Desktop to the Left (KWin)");
    EXPECT_EQ(holderText(left, {.heldBy = "KWin", .purpose = ""}, localization), "Ctrl+Alt+← belongs to KWin");
}

TEST(HolderText, IsInTheUsersLanguageButForTheHoldersOwnWords) {
    platform::simulated::Localization localization;
    localization.texts = {{"Tessel/%1 %2 (%3)", "%3: %1 %2"},
                          {"Tessel/%1: %2 (%3)", "%3: „%2“ (%1)"},
                          {"Tessel/shows the desktop", "zeigt den Schreibtisch"},
                          {"Tessel/Show Desktop", "wrong"}};
    EXPECT_EQ(holderText(left, {.heldBy = "GNOME", .purpose = KeyPurpose::showDesktop}, localization),
              "GNOME: Ctrl+Alt+← zeigt den Schreibtisch");
    EXPECT_EQ(holderText(left, {.heldBy = "KWin", .purpose = "Show Desktop"}, localization),
              "KWin: „Show Desktop“ (Ctrl+Alt+←)");
}

TEST(HolderText, EachCommonPurposeHasWordsOfItsOwn) {
    const platform::simulated::Localization localization;
    std::set<std::string> texts;
    constexpr auto last = static_cast<unsigned>(KeyPurpose::allWindows);
    for (unsigned number = 0; number <= last; ++number) {
        texts.insert(purposeText({.heldBy = "GNOME", .purpose = static_cast<KeyPurpose>(number)}, localization));
    }
    EXPECT_EQ(texts.size(), last + 1);
    EXPECT_FALSE(texts.contains(""));
}

} // namespace
} // namespace tessel
