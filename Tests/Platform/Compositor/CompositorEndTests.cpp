#include "Platform/Compositor/CompositorEnd.h"
#include "Platform/Simulated/MainActor.h"

#include <gtest/gtest.h>

namespace platform::compositor {

namespace {

using std::chrono::seconds;

class EndOfACompositor : public testing::Test {
protected:
    simulated::MainActor mainActor;
    bool hasLeft = false;
    int timesGone = 0;
    CompositorEnd end{mainActor, [this] { return hasLeft; }, [this] { ++timesGone; }};
    static constexpr seconds leeway{1};
};

TEST_F(EndOfACompositor, OneThatDoesNotComeIsWaitedForTheWholeWhile) {
    hasLeft = true;
    end.await();
    mainActor.advance(CompositorEnd::patience - leeway);
    EXPECT_EQ(timesGone, 0);
    mainActor.advance(2 * leeway);
    EXPECT_EQ(timesGone, 1);
}

TEST_F(EndOfACompositor, OneThatIsStartedAgainIsNotGone) {
    end.await();
    end.reached();
    end.lost();
    mainActor.advance(CompositorEnd::patience - leeway);
    end.reached();
    mainActor.advance(2 * CompositorEnd::patience);
    EXPECT_EQ(timesGone, 0);
}

TEST_F(EndOfACompositor, OneThatLeavesLateIsGoneSoonAfterwards) {
    end.lost();
    mainActor.advance(seconds(5));
    EXPECT_EQ(timesGone, 0);
    hasLeft = true;
    mainActor.advance(CompositorEnd::betweenLooks + leeway);
    EXPECT_EQ(timesGone, 1);
}

TEST_F(EndOfACompositor, OneThatCrashedIsGoneAfterTheWholeWhile) {
    end.lost();
    mainActor.advance(CompositorEnd::patience - leeway);
    EXPECT_EQ(timesGone, 0);
    mainActor.advance(CompositorEnd::betweenLooks + leeway);
    EXPECT_EQ(timesGone, 1);
    mainActor.advance(2 * CompositorEnd::patience);
    EXPECT_EQ(timesGone, 1);
}

} // namespace

} // namespace platform::compositor
