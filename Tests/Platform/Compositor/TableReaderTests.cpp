#include "Platform/Compositor/TableReader.h"
#include "Platform/Simulated/MainActor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

namespace platform::compositor {
namespace {

class ReadTable : public testing::Test {
protected:
    /// The compositor has this one window.
    void show(const std::string& window) {
        state = WindowTable::Contents{};
        state->windows.emplace_back(window, Window{});
    }

    simulated::MainActor mainActor;
    linux::TurnDeadline limit{mainActor};
    WindowTable table;
    /// The compositor's answer; empty while it does not answer.
    std::optional<WindowTable::Contents> state;
    int readings = 0;
    TableReader reader{mainActor, limit, table, [this](Instant /*deadline*/) {
                           ++readings;
                           return state;
                       }};
    static constexpr std::chrono::seconds pause = TableReader::untilRetry + std::chrono::seconds(1);
};

TEST_F(ReadTable, IsOpenedWithTheStateOfACompositorThatAnswers) {
    show("a");
    reader.begin();
    EXPECT_TRUE(table.isOpen());
    EXPECT_NE(table.find("a"), nullptr);
    mainActor.advance(10 * pause);
    EXPECT_EQ(readings, 1);
}

TEST_F(ReadTable, IsOpenedOnceASilentCompositorAnswers) {
    reader.begin();
    mainActor.advance(2 * pause);
    EXPECT_FALSE(table.isOpen());
    show("a");
    mainActor.advance(pause);
    EXPECT_TRUE(table.isOpen());
}

TEST_F(ReadTable, IsReadOnceForAllEventsOfAMoment) {
    show("a");
    reader.begin();
    show("b");
    reader.expectChange();
    reader.expectChange();
    EXPECT_NE(table.find("a"), nullptr);
    reader.catchUp();
    EXPECT_EQ(table.find("a"), nullptr);
    EXPECT_NE(table.find("b"), nullptr);
    reader.catchUp();
    EXPECT_EQ(readings, 2);
}

TEST_F(ReadTable, IsReadAgainAfterAPauseIfTheCompositorDidNotAnswer) {
    show("a");
    reader.begin();
    state.reset();
    reader.expectChange();
    reader.catchUp();
    mainActor.advance(2 * pause);
    EXPECT_NE(table.find("a"), nullptr);
    show("b");
    mainActor.advance(pause);
    EXPECT_NE(table.find("b"), nullptr);
}

TEST_F(ReadTable, IsNotReadWhileItIsClosed) {
    EXPECT_FALSE(reader.update(limit.end()));
    reader.begin();
    reader.expectChange();
    reader.end();
    const int before = readings;
    show("a");
    reader.catchUp();
    EXPECT_FALSE(reader.update(limit.end()));
    mainActor.advance(10 * pause);
    EXPECT_EQ(readings, before);
    EXPECT_FALSE(table.isOpen());
}

} // namespace
} // namespace platform::compositor
