#include "Platform/Simulated/Desktop.h"
#include "Tessel/PreviewCatalogue.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace tessel {
namespace {

class PreviewApplications : public testing::Test {
protected:
    platform::simulated::Desktop desktop;
    PreviewCatalogue catalogue;
};

TEST_F(PreviewApplications, AreFoundByTheirIdentifierAndReturnIt) {
    std::set<std::string> names;
    for (const std::filesystem::path& location : catalogue.locations()) {
        const auto identifier = catalogue.bundleIdentifier(location);
        ASSERT_TRUE(identifier) << location;
        EXPECT_EQ(catalogue.location(*identifier), location);
        names.insert(catalogue.displayName(location));
    }
    EXPECT_EQ(names, (std::set<std::string>{"Calculator", "Calendar", "Mail", "Maps", "Music", "Notes", "Settings",
                                            "Software", "Terminal"}));
}

TEST_F(PreviewApplications, HaveNamesInTheUsersLanguage) {
    desktop.localization.texts["Tessel/Calendar"] = "Kalender";
    const auto location = catalogue.location("com.apple.iCal");
    ASSERT_TRUE(location);
    EXPECT_EQ(catalogue.displayName(*location), "Kalender");
    EXPECT_EQ(catalogue.icon(*location).description().accessibilityDescription, "Kalender");
}

TEST_F(PreviewApplications, AreNoOthers) {
    EXPECT_EQ(catalogue.location("org.example.Editor"), std::nullopt);
    EXPECT_EQ(catalogue.bundleIdentifier("/applications/Editor"), std::nullopt);
}

} // namespace
} // namespace tessel
