#include "Platform/Simulated/Desktop.h"
#include "Tessel/Menu/ApplicationList.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <string>
#include <vector>

namespace tessel {
namespace {

InstalledApplication application(const std::string& name) {
    return {.bundleID = "org.example." + name,
            .name = name,
            .location = "/applications/" + name,
            .icon = platform::Image(
                {.source = platform::ThemeIcon{name}, .size = {20, 20}, .accessibilityDescription = {}}),
            .searchTerms = {},
            .ruleAction = {}};
}

class Chooser : public testing::Test {
protected:
    QStringList names() {
        QStringList all;
        for (int row = 0; row < list.rowCount(); ++row) {
            all.append(list.data(list.index(row), ApplicationList::nameRole).toString());
        }
        return all;
    }

    bool isChosen(int row) { return list.data(list.index(row), ApplicationList::chosenRole).toBool(); }

    platform::simulated::Desktop desktop;
    ApplicationList list{{application("Calculator"), application("Editor"), application("Mail"), application("Maps")}};
    QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(Chooser, ShowsAllUntilSomethingIsSought) {
    EXPECT_EQ(names(), (QStringList{"Calculator", "Editor", "Mail", "Maps"}));
    list.setSearchText("ma");
    EXPECT_EQ(names(), (QStringList{"Mail", "Maps"}));
    list.setSearchText("nothing of that name");
    EXPECT_EQ(list.count(), 0);
    list.setSearchText("");
    EXPECT_EQ(list.count(), 4);
}

TEST_F(Chooser, WhatIsChosenStaysChosenWhileOtherThingsAreSought) {
    list.setSearchText("maps");
    list.toggle(0);
    list.setSearchText("calc");
    list.toggle(0);
    list.setSearchText("");
    EXPECT_TRUE(isChosen(0));
    EXPECT_FALSE(isChosen(1));
    EXPECT_TRUE(isChosen(3));
    EXPECT_EQ(list.chosenCount(), 2);
    EXPECT_EQ(list.chosenLocations(),
              (std::vector<std::filesystem::path>{"/applications/Calculator", "/applications/Maps"}));
}

TEST_F(Chooser, TogglingTwiceChoosesNothing) {
    QSignalSpy changes(&list, &ApplicationList::chosenCountChanged);
    list.toggle(1);
    list.toggle(1);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(list.chosenLocations(), std::vector<std::filesystem::path>{});
}

TEST_F(Chooser, ChoosingWhatIsChosenLeavesItSo) {
    list.choose(2);
    list.choose(2);
    EXPECT_EQ(list.chosenCount(), 1);
}

TEST_F(Chooser, RowsThatAreNotThereAreIgnored) {
    for (const int row : {-1, 4, 1000}) {
        list.toggle(row);
        list.choose(row);
    }
    EXPECT_EQ(list.chosenCount(), 0);
    EXPECT_EQ(list.data(list.index(9), ApplicationList::nameRole), QVariant());
}

} // namespace
} // namespace tessel
