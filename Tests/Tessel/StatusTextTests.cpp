#include "Platform/Simulated/Localization.h"
#include "Tessel/StatusText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

const std::string activeKey = "Tessel/Active · %lld shortcuts · %lld apps";

TEST(StatusText, IsEnglishWhereThereIsNoTranslation) {
    struct Row {
        AppStatus status;
        std::size_t rules;
        std::string expected;
    };
    const std::vector<Row> rows{
        {AppStatus::paused, 3, "Paused"},
        {AppStatus::waitingForPermission, 3, "Waiting for permission"},
        {AppStatus::shortcutsTaken, 3, "Some shortcuts are taken"},
        {AppStatus::active, 0, "Active · 6 shortcuts · 0 apps"},
        {AppStatus::active, 12, "Active · 6 shortcuts · 12 apps"},
    };
    const platform::simulated::Localization localization;
    for (const Row& row : rows) {
        EXPECT_EQ(statusText(row.status, row.rules, localization), row.expected);
    }
}

TEST(StatusText, IsTheTranslationOfItsTable) {
    platform::simulated::Localization localization;
    localization.texts = {{"Tessel/Paused", "Angehalten"},
                          {"CorvidKit/Paused", "wrong"},
                          {"Tessel/Waiting for permission", "Wartet"},
                          {"Tessel/Some shortcuts are taken", "Vergeben"}};
    EXPECT_EQ(statusText(AppStatus::paused, 0, localization), "Angehalten");
    EXPECT_EQ(statusText(AppStatus::waitingForPermission, 0, localization), "Wartet");
    EXPECT_EQ(statusText(AppStatus::shortcutsTaken, 0, localization), "Vergeben");
}

TEST(StatusText, PutsTheCountedPartsWhereTheTranslationWantsThem) {
    struct Row {
        std::string translation;
        std::string expected;
    };
    const std::vector<Row> rows{
        {"Aktiv: %1, %2", "Aktiv: 6 Kürzel, 2 Programme"},
        {"%2 und %1 aktiv", "2 Programme und 6 Kürzel aktiv"},
        {"%1", "6 Kürzel"},
        {"%2", "2 Programme"},
        {"Aktiv", "Aktiv"},
    };
    for (const Row& row : rows) {
        platform::simulated::Localization localization;
        localization.texts = {
            {activeKey, row.translation}, {"Tessel/%n shortcuts", "%n Kürzel"}, {"Tessel/%n apps", "%n Programme"}};
        EXPECT_EQ(statusText(AppStatus::active, 2, localization), row.expected) << row.translation;
    }
}

TEST(StatusText, TakesNothingOfACountedPartForAPlaceholder) {
    platform::simulated::Localization localization;
    localization.texts = {{activeKey, "%1 - %2"}, {"Tessel/%n shortcuts", "%2%n"}, {"Tessel/%n apps", "%1%n"}};
    EXPECT_EQ(statusText(AppStatus::active, 2, localization), "%26 - %12");
}

TEST(StatusLine, SaysHowThingsStand) {
    EXPECT_EQ(statusLine(AppStatus::active, {}), "Active");
    EXPECT_EQ(statusLine(AppStatus::paused, {}), "Paused");
    EXPECT_EQ(statusLine(AppStatus::waitingForPermission, {}), "Waiting for permission");
}

TEST(StatusLine, NamesTheTakenShortcutsInDeclarationOrder) {
    EXPECT_EQ(statusLine(AppStatus::shortcutsTaken, {WindowAction::maximizeHeight, WindowAction::leftHalf}),
              "Some shortcuts are taken: leftHalf, maximizeHeight");
    EXPECT_EQ(statusLine(AppStatus::shortcutsTaken, {WindowAction::center}), "Some shortcuts are taken: center");
}

} // namespace
} // namespace tessel
