#pragma once

#include "FakeKWin.h"
#include "Platform/KWin/HotKeys.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::kwin {

inline constexpr std::uint32_t leftCode = 123;
inline constexpr std::uint32_t cCode = 8;
inline constexpr std::uint32_t ctrlAlt = 0x1800;
inline constexpr std::int32_t keyLeft = 0x0d000012;
inline constexpr std::int32_t keyC = 0x0c000043;
inline constexpr std::int32_t keyN = 0x0c00004e;
inline constexpr std::int32_t keyM = 0x0c00004d;
inline const FakeAccel::Action first{"org.example.Other", "first", "Another program", "First"};
inline const FakeAccel::Action second{"org.example.Other", "second", "Another program", "Second"};
inline const FakeAccel::Action third{"org.example.Third", "third", "A third program", "Third"};

/// A program with the two keys of `add`, in a session where others have them.
class BorrowingTest : public testing::Test {
protected:
    MessageBus daemon;
    linux::MainLoop loop;
    LogRecord log;
    std::string note = daemon.folder / "state/tessel/borrowed-shortcuts.json";
    std::unique_ptr<FakeKWin> kwin;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;
    std::vector<EventHotKeyRef> references;

    void SetUp() override {
        daemon.start();
        kwin = std::make_unique<FakeKWin>(daemon.address());
        kwin->accel.hold(first, {keyLeft, keyN});
        kwin->accel.hold(second, {keyC});
        kwin->start();
    }

    void start() {
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), std::chrono::milliseconds(20));
        keys = std::make_unique<HotKeys>(
            loop, *bus, [](std::uint32_t, std::uint32_t) { return std::string("Ours"); }, note, log.sink());
        losses = std::make_unique<linux::HotKeyLosses>(*keys);
        ASSERT_TRUE(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
    }

    void begin(bool consent) {
        start();
        keys->setBorrows(consent);
        registerBoth();
    }

    void registerBoth() {
        for (const std::uint32_t code : {leftCode, cCode}) {
            const auto registration = keys->registerHotKey(code, ctrlAlt, {.signature = 1, .id = code});
            if (registration.reference) {
                references.push_back(*registration.reference);
            }
        }
    }

    void unregisterAll() {
        for (const EventHotKeyRef reference : references) {
            keys->unregisterHotKey(reference);
        }
        references.clear();
    }

    /// As the user's choice is carried out.
    void choose(bool consent) {
        keys->setBorrows(consent);
        unregisterAll();
        registerBoth();
    }

    void end() {
        keys.reset();
        bus.reset();
        references.clear();
    }

    /// Nothing that it does in its end reaches anybody.
    void kill() {
        kwin->accel.callsLeft = 0;
        end();
        kwin->accel.callsLeft = std::numeric_limits<int>::max();
    }

    /// Our actions are known, and have no keys.
    void takeFromOurs() {
        for (const auto& [action, key] : kwin->accel.ownKeys()) {
            kwin->accel.hold({GlobalAccel::ownComponent, action, "Tessel", "Ours"}, {});
        }
    }

    [[nodiscard]] HotKeyLoan loanOf(std::uint32_t code) const { return keys->loan(code, ctrlAlt); }

    [[nodiscard]] std::optional<LoanObstacle> obstacleTo(std::uint32_t code) const {
        return keys->loanObstacle(code, ctrlAlt);
    }

    [[nodiscard]] bool hasNote() const { return std::filesystem::exists(note); }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    void expectLent() {
        EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN}));
        EXPECT_EQ(kwin->accel.keysOf(second), alone({}));
        EXPECT_EQ(kwin->accel.recipient(keyLeft), GlobalAccel::ownComponent);
        EXPECT_EQ(kwin->accel.recipient(keyC), GlobalAccel::ownComponent);
        EXPECT_EQ(loanOf(leftCode), HotKeyLoan::made);
        EXPECT_EQ(loanOf(cCode), HotKeyLoan::made);
    }

    void expectGivenBack() {
        EXPECT_EQ(kwin->accel.keysOf(first), alone({keyLeft, keyN}));
        EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
        EXPECT_FALSE(hasNote());
    }
};

} // namespace platform::kwin
