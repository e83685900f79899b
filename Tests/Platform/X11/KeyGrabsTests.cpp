#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/KeyGrabs.h"
#include "XServer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace platform::x11 {
namespace {

using Kind = KeyGrabs::Kind;

constexpr KeyCombination combination{.keyCode = 113, .modifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1};
constexpr std::uint16_t capsLock = XCB_MOD_MASK_LOCK;

/// One client of a server.
struct GrabbingClient {
    explicit GrabbingClient(const std::string& display)
        : connection(Connection::open(display, clock.turnDeadline()).value())
        , grabs(connection) {}

    KeyGrabs::Outcome take(bool borrows = false) {
        connection.deadline().begin();
        const KeyGrabs::Outcome outcome = grabs.take(combination, capsLock, borrows);
        // The server has then released the returned grabs.
        static_cast<void>(connection.succeeded({}));
        return outcome;
    }

    /// Grabs the combination against any holder, by the other kind of grab.
    bool hold(Kind kind) {
        connection.deadline().begin();
        return grabs.renew(combination, capsLock, kind);
    }

    void release(Kind kind) {
        grabs.release(combination, capsLock, kind);
        static_cast<void>(connection.succeeded({}));
    }

    linux::MainLoop clock;
    Connection connection;
    KeyGrabs grabs;
};

class Grabs : public testing::Test {
protected:
    XServer server;
    GrabbingClient ours{server.display()};
    GrabbingClient manager{server.display()};
};

TEST_F(Grabs, AFreeCombinationIsTakenByTheCoreKind) {
    for (const bool borrows : {false, true}) {
        const KeyGrabs::Outcome outcome = ours.take(borrows);
        EXPECT_EQ(outcome.kind, Kind::core);
        EXPECT_FALSE(outcome.isHeldByOthers);
        EXPECT_TRUE(manager.hold(Kind::extension)) << "a grab of the other kind is left behind";
        manager.release(Kind::extension);
    }
}

TEST_F(Grabs, ACombinationThatIsHeldIsRefusedAndCouldBeBorrowed) {
    for (const Kind kind : {Kind::core, Kind::extension}) {
        ASSERT_TRUE(manager.hold(kind));
        const KeyGrabs::Outcome outcome = ours.take();
        EXPECT_EQ(outcome.kind, std::nullopt);
        EXPECT_TRUE(outcome.isHeldByOthers);
        manager.release(kind);
        for (const Kind left : {Kind::core, Kind::extension}) {
            EXPECT_TRUE(manager.hold(left)) << "a refused grab is left behind";
            manager.release(left);
        }
    }
}

TEST_F(Grabs, ACombinationIsBorrowedByTheOtherKindAlone) {
    for (const auto& [theirs, borrowed] : {std::pair{Kind::core, Kind::extension}, {Kind::extension, Kind::core}}) {
        ASSERT_TRUE(manager.hold(theirs));
        const KeyGrabs::Outcome outcome = ours.take(true);
        EXPECT_EQ(outcome.kind, borrowed);
        EXPECT_TRUE(outcome.isHeldByOthers);
        // A holder that releases and grabs again, as at a reload, is not blocked.
        manager.release(theirs);
        EXPECT_TRUE(manager.hold(theirs));
        manager.release(theirs);
        ours.release(borrowed);
    }
}

TEST_F(Grabs, ACombinationThatIsHeldByBothKindsCannotBeBorrowed) {
    GrabbingClient other(server.display());
    ASSERT_TRUE(manager.hold(Kind::core));
    ASSERT_TRUE(other.hold(Kind::extension));
    const KeyGrabs::Outcome outcome = ours.take(true);
    EXPECT_EQ(outcome.kind, std::nullopt);
    EXPECT_FALSE(outcome.isHeldByOthers);
}

TEST_F(Grabs, ABorrowedGrabIsRenewedUntilAnotherClientHasThatKindAsWell) {
    ASSERT_TRUE(manager.hold(Kind::core));
    ASSERT_EQ(ours.take(true).kind, Kind::extension);
    EXPECT_TRUE(ours.hold(Kind::extension));
    ours.release(Kind::extension);
    ASSERT_TRUE(manager.hold(Kind::extension));
    EXPECT_FALSE(ours.hold(Kind::extension));
}

TEST_F(Grabs, ALockVariantThatIsHeldMakesAllOfThemHeld) {
    const auto variant = static_cast<std::uint16_t>(combination.modifiers | capsLock);
    xcb_grab_key(manager.connection.raw(), 0, manager.connection.root(), variant, combination.keyCode,
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    static_cast<void>(manager.connection.succeeded({}));
    EXPECT_EQ(ours.take().kind, std::nullopt);
    EXPECT_EQ(ours.take(true).kind, Kind::extension);
}

} // namespace
} // namespace platform::x11
