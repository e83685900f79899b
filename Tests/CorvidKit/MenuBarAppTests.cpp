#include "CorvidKit/MenuBarApp.h"
#include "Platform/Simulated/Desktop.h"
#include "Platform/Simulated/Popover.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;

class Shell : public testing::Test {
protected:
    MenuBarApp::Parts launch() {
        ++launches;
        const auto controller = MenuBarController::make("Tessel", std::make_shared<platform::View>(), popover, changes,
                                                        [] { return std::string("uiwindow.split.2x1"); });
        made = controller;
        return {.menuBar = controller, .updates = updates};
    }

    platform::simulated::Desktop desktop;
    platform::simulated::Popover popover{desktop.trace};
    Publisher<> changes;
    UpdateCenter updates = UpdateCenter::preview("tessel", true);
    std::weak_ptr<MenuBarController> made;
    int launches = 0;
};

TEST_F(Shell, LaunchesOnceTheLoopRunsAndShowsWhatIsDue) {
    bool wasBadged = false;
    EXPECT_EQ(MenuBarApp::run([this, &wasBadged] {
                  EXPECT_EQ(desktop.trace.take(), (Lines{"run this program"}));
                  MenuBarApp::Parts parts = launch();
                  // Calls that the launch posts run before calls that the shell posts afterwards.
                  desktop.mainActor.post([this, &wasBadged] {
                      desktop.mainActor.post([this, &wasBadged] {
                          wasBadged = desktop.statusBar.items().front()->image->description().isBadged;
                      });
                  });
                  return parts;
              }),
              0);
    EXPECT_EQ(launches, 1);
    EXPECT_TRUE(wasBadged);
}

TEST_F(Shell, HoldsTheControllerAsLongAsTheLoopRuns) {
    bool wasThere = false;
    EXPECT_EQ(MenuBarApp::run([this, &wasThere] {
                  desktop.mainActor.post([this, &wasThere] {
                      MenuBarController::releaseShared();
                      wasThere = !made.expired();
                  });
                  return launch();
              }),
              0);
    EXPECT_TRUE(wasThere);
    EXPECT_TRUE(made.expired());
    EXPECT_EQ(MenuBarController::shared(), nullptr);
    EXPECT_TRUE(desktop.statusBar.items().empty());
}

} // namespace
} // namespace corvid
