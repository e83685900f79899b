#include "Tessel/Menu/RuleAppModel.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace tessel {
namespace {

RuleApp row(const std::string& name, WindowAction action = WindowAction::maximize) {
    return {.bundleID = "org.example." + name, .name = name, .icon = std::nullopt, .action = action};
}

std::vector<std::string> shown(const RuleAppModel& model) {
    std::vector<std::string> all;
    for (int index = 0; index < model.rowCount(); ++index) {
        all.push_back(model.data(model.index(index), RuleAppModel::bundleIDRole).toString().toStdString() + " " +
                      model.data(model.index(index), RuleAppModel::actionRole).toString().toStdString());
    }
    return all;
}

TEST(RuleAppModel, ShowsTheRowsThatItIsGiven) {
    RuleAppModel model;
    model.show({row("Editor"), row("Mail", WindowAction::center)});
    EXPECT_EQ(shown(model), (std::vector<std::string>{"org.example.Editor maximize", "org.example.Mail center"}));
    EXPECT_EQ(model.data(model.index(0), RuleAppModel::nameRole), "Editor");
    EXPECT_EQ(model.data(model.index(0), RuleAppModel::iconRole), "");
}

TEST(RuleAppModel, ShowsWhereAnIconComesFrom) {
    RuleAppModel model;
    RuleApp themed = row("Editor");
    themed.icon = platform::Image(
        {.source = platform::ThemeIcon{"text-editor"}, .size = {20, 20}, .accessibilityDescription = {}});
    RuleApp filed = row("Mail");
    filed.icon = platform::Image(
        {.source = platform::ImageFile{"/icons/mail.png"}, .size = {20, 20}, .accessibilityDescription = {}});
    model.show({themed, filed});
    EXPECT_EQ(model.data(model.index(0), RuleAppModel::iconRole), "text-editor");
    EXPECT_EQ(model.data(model.index(1), RuleAppModel::iconRole), "/icons/mail.png");
}

TEST(RuleAppModel, AChangeOfOneRowTouchesNoOther) {
    RuleAppModel model;
    model.show({row("Calculator"), row("Editor"), row("Mail")});
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.show({row("Calculator"), row("Editor", WindowAction::center), row("Mail")});
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.first().first().toModelIndex().row(), 1);
    EXPECT_EQ(reset.count(), 0);
}

TEST(RuleAppModel, ARowKeepsItsIdentityWhileOthersComeAndGo) {
    RuleAppModel model;
    model.show({row("Calculator"), row("Editor"), row("Mail")});
    const QPersistentModelIndex mail = model.index(2);
    model.show({row("Editor"), row("Files"), row("Games"), row("Mail")});
    EXPECT_EQ(mail.row(), 3);
    model.show({row("Mail")});
    EXPECT_EQ(mail.row(), 0);
    model.show({});
    EXPECT_FALSE(mail.isValid());
}

RC_GTEST_PROP(RuleAppModel, EndsUpWithAnyRowsWhateverCameBefore, ()) {
    const auto rows = [] {
        std::vector<RuleApp> all;
        const std::vector<int> names = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 12));
        for (const int name : std::set<int>(names.begin(), names.end())) {
            all.push_back(row(std::to_string(name), *rc::gen::element(WindowAction(WindowAction::maximize),
                                                                      WindowAction(WindowAction::center))));
        }
        // In any order: the model sorts by name, and names change.
        const int turn = all.empty() ? 0 : *rc::gen::inRange(0, static_cast<int>(all.size()));
        std::ranges::rotate(all, all.begin() + turn);
        return all;
    };
    RuleAppModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int step = 0; step < 4; ++step) {
        const std::vector<RuleApp> wanted = rows();
        model.show(wanted);
        std::vector<std::string> expected;
        for (const RuleApp& each : wanted) {
            expected.push_back(each.bundleID + " " + std::string(each.action.rawValue()));
        }
        RC_ASSERT(shown(model) == expected);
    }
}

} // namespace
} // namespace tessel
