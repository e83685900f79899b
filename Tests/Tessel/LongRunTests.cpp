#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <chrono>
#include <cstddef>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using platform::simulated::Application;

/// Bytes in use on the heap; zero under a sanitizer, whose allocator does not report them.
std::size_t heapInUse() {
    return mallinfo2().uordblks;
}

/// Long use: applications that start and end, and presses.
class LongRun : public testing::Test {
protected:
    LongRun() { state.setRule("org.example.Editor", WindowAction::maximize); }

    /// An application is launched, its window is placed and moved back by the application, a key is pressed, and the
    /// application ends.
    void live(int rounds) {
        for (int round = 0; round < rounds; ++round) {
            Application& editor =
                desktop.applications.launch({.process = 10 + round % 1000, .bundleIdentifier = "org.example.Editor"});
            desktop.mainActor.run();
            editor.openWindow();
            desktop.mainActor.run();
            editor.focusedWindow->moveTo({{100, 100}, {800, 600}});
            desktop.applications.frontmost = &editor;
            ASSERT_EQ(desktop.hotKeyEvents.press(123, 4096 + 2048), platform::noErr);
            desktop.mainActor.advance(400ms);
            placed += editor.focusedWindow->frame() == corvid::CGRect{{0, 25}, {1920, 1055}} ? 1 : 0;
            desktop.applications.terminate(editor);
            desktop.mainActor.run();
            desktop.applications.forgetEnded();
            desktop.trace.clear();
        }
    }

    /// After that many rounds the heap has its former size.
    void expectNoGrowthIn(int rounds) {
        // Process ids repeat after these.
        live(1000);
        const std::size_t before = heapInUse();
        live(rounds);
        EXPECT_EQ(placed, 1000 + rounds) << "each launch was placed, moved, and placed again";
        EXPECT_EQ(desktop.accessibilityObservers.count(), 0U);
        EXPECT_LE(heapInUse(), before + 4096);
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    AppState state{desktop.standardUserDefaults, false, dispatcher};
    int placed = 0;
};

TEST_F(LongRun, OfLaunchesAndPressesTakesNoMemory) {
    expectNoGrowthIn(4000);
}

using WholeLongRun = LongRun;

/// Shows leaks that happen once in hundreds of rounds.
TEST_F(WholeLongRun, OfAHundredThousandLaunchesAndPressesTakesNoMemory) {
    if (heapInUse() == 0) {
        GTEST_SKIP() << "a sanitizer's allocator does not send what is in use";
    }
    expectNoGrowthIn(100'000);
}

} // namespace
} // namespace tessel
