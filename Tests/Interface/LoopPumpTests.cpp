#include "CorvidKit/Toolkit/LoopPump.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <memory>
#include <vector>

namespace corvid::toolkit {
namespace {

using namespace std::chrono_literals;
using platform::linux::MainLoop;

TEST(LoopPump, TimersOfTheMainLoopFireInQtsLoop) {
    MainLoop mainLoop;
    int count = 0;
    std::unique_ptr<platform::ScheduledWork> timer;
    // Each timer sets the next, so each needs the one before.
    std::function<void()> next = [&] {
        if (++count == 5) {
            mainLoop.end(0);
            return;
        }
        timer = mainLoop.schedule(mainLoop.now() + 5ms, 1ms, next);
    };
    mainLoop.continueIn([&] {
        const LoopPump pump(mainLoop);
        next();
        QCoreApplication::exec();
    });
    EXPECT_EQ(mainLoop.run(), 0);
    EXPECT_EQ(count, 5);
}

TEST(LoopPump, BothLoopsTurnSideBySide) {
    MainLoop mainLoop;
    std::vector<std::string> order;
    mainLoop.continueIn([&] {
        const LoopPump pump(mainLoop);
        // A task of one loop posts a task to the other, and back.
        mainLoop.post([&] {
            order.emplace_back("main loop");
            QTimer::singleShot(0, [&] {
                order.emplace_back("Qt");
                mainLoop.post([&] {
                    order.emplace_back("main loop again");
                    mainLoop.end(3);
                });
            });
        });
        QCoreApplication::exec();
    });
    EXPECT_EQ(mainLoop.run(), 3);
    EXPECT_EQ(order, (std::vector<std::string>{"main loop", "Qt", "main loop again"}));
}

TEST(LoopPump, AMainLoopThatHasALotToDoLeavesQtItsTurns) {
    MainLoop mainLoop;
    bool hasQtRun = false;
    int turns = 0;
    std::function<void()> again = [&] {
        ++turns;
        if (!hasQtRun) {
            mainLoop.post(again);
        } else {
            mainLoop.end(0);
        }
    };
    mainLoop.continueIn([&] {
        const LoopPump pump(mainLoop);
        QTimer::singleShot(0, [&] { hasQtRun = true; });
        mainLoop.post(again);
        QCoreApplication::exec();
    });
    EXPECT_EQ(mainLoop.run(), 0);
    EXPECT_TRUE(hasQtRun);
    EXPECT_GT(turns, 0);
}

/// Returns whether `count` turns of the main loop, each posted by the one before, end within `patience` without any
/// event from outside.
bool endsByItself(int count, std::chrono::milliseconds patience) {
    MainLoop mainLoop;
    int turns = 0;
    std::function<void()> again = [&] {
        if (++turns == count) {
            mainLoop.end(0);
        } else {
            mainLoop.post(again);
        }
    };
    mainLoop.continueIn([&] {
        const LoopPump pump(mainLoop);
        mainLoop.post(again);
        // Of this loop's own: a single shot would fire in the loop of a later test, after the main loop's end.
        QTimer deadline;
        QObject::connect(&deadline, &QTimer::timeout, [&] { mainLoop.end(1); });
        deadline.start(patience);
        QCoreApplication::exec();
    });
    return mainLoop.run() == 0;
}

TEST(LoopPump, AMainLoopThatAlwaysHasMoreToDoWaitsForNothingFromOutside) {
    // One more than a power of two, which some loop may use as the size of a batch, and many times that.
    for (const int count : {1, 65, 129, 257, 10'001}) {
        EXPECT_TRUE(endsByItself(count, 10s)) << count << " turns";
    }
}

TEST(LoopPump, AHostThatReturnsLeavesTheMainLoopRunning) {
    MainLoop mainLoop;
    bool hasRun = false;
    mainLoop.continueIn([&] { mainLoop.post([&] { hasRun = true, mainLoop.end(0); }); });
    EXPECT_EQ(mainLoop.run(), 0);
    EXPECT_TRUE(hasRun);
}

} // namespace
} // namespace corvid::toolkit
