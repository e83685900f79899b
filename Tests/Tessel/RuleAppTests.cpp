#include "Platform/Simulated/Desktop.h"
#include "Tessel/RuleApp.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

using Lines = std::vector<std::string>;

class RuleApps : public testing::Test {
protected:
    RuleApps() {
        desktop.applicationCatalogue.install("/applications/Editor",
                                             {"org.example.Editor", "Text Editor", "accessories-text-editor"});
        desktop.applicationCatalogue.install("/applications/Terminal",
                                             {"org.example.Terminal", "terminal", "terminal"});
    }

    Lines names(const Prefs::Rules& rules) {
        Lines found;
        for (const RuleApp& row : ruleApps(rules, icons)) {
            found.push_back(row.name);
        }
        return found;
    }

    platform::simulated::Desktop desktop;
    RuleAppIcons icons;
};

TEST_F(RuleApps, AreRowsWithNameIconAndAction) {
    const std::vector<RuleApp> rows = ruleApps({{"org.example.Editor", WindowAction::maximize}}, icons);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().id(), "org.example.Editor");
    EXPECT_EQ(rows.front().name, "Text Editor");
    EXPECT_EQ(rows.front().action, WindowAction::maximize);
    ASSERT_TRUE(rows.front().icon.has_value());
    const platform::ImageDescription& icon = rows.front().icon->description();
    EXPECT_EQ(icon.source, (platform::ImageSource(platform::ThemeIcon{.name = "accessories-text-editor"})));
    EXPECT_EQ(icon.size, (corvid::CGSize{20, 20}));
    EXPECT_EQ(icon.scale, 2);
}

TEST_F(RuleApps, KeepTheIconThatWasLookedUpOnce) {
    const std::vector<RuleApp> first = ruleApps({{"org.example.Editor", WindowAction::maximize}}, icons);
    desktop.trace.clear();
    const std::vector<RuleApp> second = ruleApps({{"org.example.Editor", WindowAction::maximize}}, icons);
    EXPECT_EQ(desktop.trace.take("icon"), Lines{});
    EXPECT_EQ(first, second) << "the very same picture";
    RuleAppIcons fresh;
    EXPECT_NE(ruleApps({{"org.example.Editor", WindowAction::maximize}}, fresh), first);
}

TEST_F(RuleApps, OfAnApplicationThatIsNotInstalledHaveItsIdentifierForANameAndNoIcon) {
    const std::vector<RuleApp> rows = ruleApps({{"org.example.Gone", WindowAction::center}}, icons);
    EXPECT_EQ(rows, (std::vector<RuleApp>{{.bundleID = "org.example.Gone",
                                           .name = "org.example.Gone",
                                           .icon = std::nullopt,
                                           .action = WindowAction::center}}));
}

TEST_F(RuleApps, KeepTheIconOfAnApplicationThatWasRemoved) {
    static_cast<void>(ruleApps({{"org.example.Editor", WindowAction::maximize}}, icons));
    desktop.applicationCatalogue.uninstall("/applications/Editor");
    const std::vector<RuleApp> rows = ruleApps({{"org.example.Editor", WindowAction::maximize}}, icons);
    EXPECT_EQ(rows.front().name, "org.example.Editor");
    EXPECT_TRUE(rows.front().icon.has_value());
}

TEST_F(RuleApps, LoseAFinalAppOfTheirNames) {
    desktop.applicationCatalogue.install("/applications/Mail.app", {"org.example.Mail", "Mail.app", "mail"});
    EXPECT_EQ(names({{"org.example.Mail", WindowAction::maximize}}), (Lines{"Mail"}));
}

TEST_F(RuleApps, AreSortedByNameWithLetterCaseAside) {
    desktop.applicationCatalogue.install("/applications/A", {"z.first", "browser", ""});
    desktop.applicationCatalogue.install("/applications/B", {"y.second", "Archive", ""});
    EXPECT_EQ(names({{"org.example.Editor", WindowAction::maximize},
                     {"org.example.Terminal", WindowAction::center},
                     {"z.first", WindowAction::maximize},
                     {"y.second", WindowAction::maximize}}),
              (Lines{"Archive", "browser", "terminal", "Text Editor"}));
}

TEST_F(RuleApps, AreNoneWithoutRules) {
    EXPECT_TRUE(ruleApps({}, icons).empty());
}

} // namespace
} // namespace tessel
