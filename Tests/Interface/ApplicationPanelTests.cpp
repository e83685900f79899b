#include "CorvidKit/Toolkit/PopoverWindow.h"
#include "Platform/Seam/Desktop/HostedLoop.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/Menu/ApplicationPanel.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace tessel {
namespace {

using Paths = std::vector<std::filesystem::path>;

class LoopWithoutEvents final : public platform::HostedLoop {
public:
    [[nodiscard]] int descriptor() const override { return -1; }

    [[nodiscard]] Outlook serve() override { return Outlook::idle; }
};

/// A panel over a popover that is open.
class Panel : public testing::Test {
protected:
    void SetUp() override {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Editor", ""});
        popover.setContentView(std::make_shared<platform::View>());
        popover.show({.rect = corvid::CGRect{{500, 1070}, {0, 0}}, .isAtPointer = true}, platform::Popover::Edge::minY);
        ASSERT_TRUE(popover.isShown());
    }

    void ask() {
        panel.runModal({.allowedContentTypes = {platform::applicationContentType},
                        .directory = "/Applications",
                        .allowsMultipleSelection = true,
                        .prompt = "Add"},
                       [this](Paths paths) { chosen = std::move(paths); });
        QCoreApplication::processEvents();
    }

    /// Acts as the user does in the panel's window, by the name of the chooser's function or signal.
    static void act(const char* name) {
        for (QWindow* each : QGuiApplication::topLevelWindows()) {
            const auto* window = qobject_cast<QQuickWindow*>(each);
            if (window == nullptr || !window->isVisible()) {
                continue;
            }
            for (QQuickItem* item : window->contentItem()->childItems()) {
                if (item->metaObject()->indexOfProperty("applications") >= 0) {
                    EXPECT_TRUE(QMetaObject::invokeMethod(item, name));
                }
            }
        }
        QCoreApplication::processEvents();
    }

    platform::simulated::Desktop desktop;
    LoopWithoutEvents loop;
    QQmlEngine engine;
    corvid::toolkit::PopoverWindow popover{
        {.mainLoop = loop,
         .mainActor = desktop.mainActor,
         .appearance = desktop.appearance,
         .ownWindows = &desktop.ownWindows,
         .screens = desktop.screens,
         .sessionLock = &desktop.sessionLock,
         .languages = {}},
        engine,
        [](const platform::View& /*view*/, QQmlEngine& /*engine*/, const corvid::toolkit::PopoverWindow* /*popover*/) {
            auto item = std::make_unique<QQuickItem>();
            item->setImplicitWidth(300);
            item->setImplicitHeight(200);
            return item;
        }};
    ApplicationPanel panel{engine, popover};
    std::optional<Paths> chosen;
};

TEST_F(Panel, ThePopoverMakesRoomAndComesBackWithWhatWasChosen) {
    ask();
    EXPECT_FALSE(popover.isShown());
    EXPECT_EQ(chosen, std::nullopt);
    act("confirm");
    EXPECT_EQ(chosen, Paths{"/applications/Editor"});
    EXPECT_TRUE(popover.isShown());
}

TEST_F(Panel, ThePopoverStaysClosedWhereNothingWasChosen) {
    ask();
    act("cancelled");
    EXPECT_EQ(chosen, Paths{});
    EXPECT_FALSE(popover.isShown());
}

TEST_F(Panel, AnotherRequestCancelsTheOneBefore) {
    ask();
    std::optional<Paths> second;
    panel.runModal({.allowedContentTypes = {}, .directory = {}, .allowsMultipleSelection = true, .prompt = "Add"},
                   [&](Paths paths) { second = std::move(paths); });
    EXPECT_EQ(chosen, Paths{});
    EXPECT_EQ(second, std::nullopt);
    QCoreApplication::processEvents();
    act("confirm");
    EXPECT_EQ(second, Paths{"/applications/Editor"});
}

} // namespace
} // namespace tessel
