#include "CorvidKit/Toolkit/ItemFile.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/Menu/ApplicationList.h"
#include "Tessel/Prefs.h"
#include "Tests/Interface/ViewFixture.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessel {
namespace {

using Locations = std::vector<std::filesystem::path>;

/// The list of applications in a window that has the keyboard.
class ApplicationChooser : public testing::Test {
protected:
    void SetUp() override {
        desktop.applicationCatalogue.install(
            "/gimp", {"gimp", "GNU Image Manipulation Program", "gimp", true, {"Image Editor"}});
        desktop.applicationCatalogue.install("/mail", {"org.example.Mail", "Mail", "mail"});
        desktop.applicationCatalogue.install("/maps", {"org.example.Maps", "Maps", "maps"});
        desktop.standardUserDefaults[Prefs::rules] = {{"org.example.Mail", WindowAction::center}};
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        list = std::make_unique<ApplicationList>(installedApplications());
        item = corvid::toolkit::itemFromFile(
            engine, QUrl(QStringLiteral("qrc:/qt/qml/Tessel/ApplicationChooser.qml")),
            {{"applications", QVariant::fromValue(list.get())}, {"takesSeveral", true}, {"prompt", "Add"}});
        ASSERT_NE(item, nullptr);
        item->setParentItem(window.contentItem());
        item->setSize({400, 480});
        window.resize(400, 480);
        window.show();
        window.requestActivate();
        item->forceActiveFocus(Qt::ActiveWindowFocusReason);
        confirmations = std::make_unique<QSignalSpy>(item.get(), SIGNAL(confirmed()));
        draw();
    }

    void TearDown() override { item.reset(); }

    void draw() {
        QCoreApplication::processEvents();
        ASSERT_FALSE(window.grabWindow().isNull());
    }

    QQuickItem& add() {
        for (QQuickItem* button : itemsOfType(*item, "PillButton")) {
            if (button->property("title").toString() == "Add") {
                return *button;
            }
        }
        throw std::runtime_error("there is no button to add with");
    }

    static void press(QQuickItem& button) { QMetaObject::invokeMethod(&button, "pressed"); }

    void type(const char* text) {
        for (const char letter : std::string(text)) {
            QTest::keyClick(&window, letter);
        }
        draw();
    }

    platform::simulated::Desktop desktop;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<ApplicationList> list;
    std::unique_ptr<QQuickItem> item;
    std::unique_ptr<QSignalSpy> confirmations;
};

TEST_F(ApplicationChooser, EnterAddsTheOneThatIsMarked) {
    type("gimp");
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(confirmations->count(), 1);
    EXPECT_EQ(list->chosenLocations(), Locations{"/gimp"});
}

TEST_F(ApplicationChooser, AddDoesWhatEnterDoes) {
    type("ma");
    QTest::keyClick(&window, Qt::Key_Down);
    EXPECT_TRUE(add().isEnabled());
    press(add());
    EXPECT_EQ(confirmations->count(), 1);
    EXPECT_EQ(list->chosenLocations(), Locations{"/maps"});
}

TEST_F(ApplicationChooser, EnterAndAddAddWhatIsChosenRatherThanWhatIsMarked) {
    list->toggle(2);
    QTest::keyClick(&window, Qt::Key_Return);
    press(add());
    EXPECT_EQ(confirmations->count(), 2);
    EXPECT_EQ(list->chosenLocations(), Locations{"/maps"});
}

TEST_F(ApplicationChooser, NothingCanBeAddedWhereNothingIsFound) {
    type("nothing of that name");
    EXPECT_FALSE(add().isEnabled());
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(confirmations->count(), 0);
    EXPECT_EQ(list->chosenCount(), 0);
}

TEST_F(ApplicationChooser, RowsSayWhichRuleAnApplicationHasAlready) {
    std::map<std::string, std::string> rules;
    for (QQuickItem* row : itemsOfType(*item, "ApplicationRow")) {
        std::string shown;
        for (QQuickItem* label : itemsOfType(*row, "Label")) {
            shown += "[" + label->property("text").toString().toStdString() + "]";
        }
        rules.emplace(row->property("name").toString().toStdString(), shown);
    }
    EXPECT_EQ(rules, (std::map<std::string, std::string>{
                         {"GNU Image Manipulation Program", "[GNU Image Manipulation Program][]"},
                         {"Mail", "[Mail][Center]"},
                         {"Maps", "[Maps][]"}}));
}

} // namespace
} // namespace tessel
