#include "FakeKWin.h"
#include "Platform/KWin/HotKeys.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"

#include <gtest/gtest.h>

#include <rapidcheck.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace platform::kwin {
namespace {

using KeyList = std::vector<std::int32_t>;

/// The keys of the program under test, by position; and keys that are none of its shortcuts.
const std::map<std::uint32_t, std::int32_t> shortcutKeys{{123, 0x0d000012}, {124, 0x0d000014}, {8, 0x0c000043}};
constexpr std::uint32_t shortcutModifiers = 0x1800;
const std::vector<FakeAccel::Action> holders{
    {"org.example.One", "a", "One", "A"}, {"org.example.One", "b", "One", "B"}, {"org.example.Two", "c", "Two", "C"}};

/// A key of each holder's own that no other program requests.
std::int32_t ownKey(std::size_t holder, int number) {
    return static_cast<std::int32_t>(0x0c000030 + 2 * holder) + number;
}

/// A user with other programs, and an instance of ours that starts, ends, is killed and gets requests, at any time.
class BorrowingSession {
public:
    BorrowingSession(MessageBus& daemon, bool sharesKeys)
        : daemon(daemon) {
        kwin.accel.sharesKeys = sharesKeys;
        kwin.start();
    }

    /// Starts again: the shortcuts are distributed over the holders at random.
    void deal() {
        kill();
        std::filesystem::remove_all(daemon.folder / "state");
        kwin.accel.forgetOthers();
        for (const auto& [action, key] : kwin.accel.ownKeys()) {
            kwin.accel.hold({GlobalAccel::ownComponent, action, "", ""}, {});
        }
        wanted.clear();
        had.clear();
        isUntouched = true;
        std::vector<KeyList> lists(holders.size());
        for (std::size_t place = 0; place < holders.size(); ++place) {
            lists[place].push_back(ownKey(place, 0));
        }
        for (const auto& [code, key] : shortcutKeys) {
            const auto owner = *rc::gen::inRange<std::size_t>(0, holders.size() + 1);
            if (owner < lists.size()) {
                lists[owner].insert(lists[owner].begin() + *rc::gen::inRange<std::ptrdiff_t>(0, 2), key);
            }
        }
        for (std::size_t place = 0; place < holders.size(); ++place) {
            userSets(place, lists[place]);
        }
        isUntouched = true;
    }

    void step() {
        const bool isInterrupted = *rc::gen::inRange(0, 4) == 0;
        if (isInterrupted) {
            kwin.accel.callsLeft = *rc::gen::inRange(0, 40);
        }
        switch (*rc::gen::inRange(0, 8)) {
        case 0:
        case 1:
            keys ? unregisterAndRegister() : begin(*rc::gen::arbitrary<bool>());
            break;
        case 2:
            keys ? choose(true) : begin(true);
            break;
        case 3:
            keys ? choose(false) : begin(false);
            break;
        case 4:
            kill();
            break;
        case 5:
            end();
            break;
        case 6:
            turns();
            break;
        default:
            userChanges();
            break;
        }
        if (kwin.accel.callsLeft <= 0) {
            kill();
        }
        kwin.accel.callsLeft = std::numeric_limits<int>::max();
    }

    /// Without the consent all keys are the others' again, and stay so.
    void settle() {
        keys ? choose(false) : begin(false);
        turns();
        for (int tries = 0; tries < 20 && losses->take(); ++tries) {
            unregisterAll();
            registerAll();
            turns();
        }
        check("without the consent");
        end();
        check("after the end");
    }

private:
    [[nodiscard]] static KeyList listOf(const KeySequences& sequences) {
        KeyList list;
        for (const KeySequence& each : sequences) {
            if (each.front() != 0) {
                list.push_back(each.front());
            }
        }
        return list;
    }

    [[nodiscard]] KeyList present(std::size_t holder) { return listOf(kwin.accel.keysOf(holders[holder])); }

    void check(const char* when) {
        for (std::size_t place = 0; place < holders.size(); ++place) {
            const KeyList found = present(place);
            for (const std::int32_t key : wanted[place]) {
                RC_LOG() << "holder " << place << " " << when << ", key " << std::hex << key << std::endl;
                RC_ASSERT(std::ranges::find(found, key) != found.end());
            }
            for (const std::int32_t key : found) {
                RC_ASSERT(had[place].contains(key));
            }
            RC_ASSERT(!isUntouched || std::ranges::is_permutation(found, wanted[place]));
        }
    }

    void begin(bool consent) {
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), std::chrono::milliseconds(20));
        keys = std::make_unique<HotKeys>(
            loop, *bus, [](std::uint32_t, std::uint32_t) { return std::string("Ours"); },
            daemon.folder / "state/tessel/borrowed-shortcuts.json", log.sink());
        losses = std::make_unique<linux::HotKeyLosses>(*keys);
        RC_ASSERT(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
        keys->setBorrows(consent);
        hasConsent = consent;
        registerAll();
    }

    void choose(bool consent) {
        keys->setBorrows(consent);
        hasConsent = consent;
        unregisterAll();
        registerAll();
    }

    void unregisterAndRegister() {
        unregisterAll();
        if (*rc::gen::arbitrary<bool>()) {
            turns();
        }
        registerAll();
    }

    void registerAll() {
        const bool isSure = isUntouched && hasConsent && kwin.accel.callsLeft > 1000;
        for (const auto& [code, key] : shortcutKeys) {
            const auto registration = keys->registerHotKey(code, shortcutModifiers, {.signature = 1, .id = code});
            // On a busy machine an answer may come too late, which is told.
            RC_ASSERT(!isSure || registration.reference.has_value() || losses->take());
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

    void end() {
        keys.reset();
        bus.reset();
        references.clear();
    }

    void kill() {
        kwin.accel.callsLeft = 0;
        end();
        kwin.accel.callsLeft = std::numeric_limits<int>::max();
    }

    /// Runs the posted calls, and reads the pending bus messages.
    void turns() {
        for (int idle = 0; idle < 3;) {
            constexpr std::uint64_t moment = 500;
            idle = sd_event_run(loop.handle(), moment) > 0 ? 0 : idle + 1;
        }
    }

    void userChanges() {
        const auto holder = *rc::gen::inRange<std::size_t>(0, holders.size());
        isUntouched = false;
        if (*rc::gen::arbitrary<bool>()) {
            KeyList list = present(holder);
            if (std::erase(list, ownKey(holder, 1)) == 0) {
                list.push_back(ownKey(holder, 1));
            }
            userSets(holder, list);
            return;
        }
        auto wish = shortcutKeys.begin();
        std::advance(wish, *rc::gen::inRange<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(shortcutKeys.size())));
        userGives(wish->second, holder);
    }

    void userSets(std::size_t holder, const KeyList& list) {
        wanted[holder] = list;
        had[holder].insert(list.begin(), list.end());
        kwin.accel.hold(holders[holder], list);
        kwin.reportChange(holders[holder], list);
    }

    /// As the system's settings do it: the present holder is asked to release the key.
    void userGives(std::int32_t key, std::size_t holder) {
        for (const auto& [action, own] : kwin.accel.ownKeys()) {
            if (own == key) {
                kwin.accel.hold({GlobalAccel::ownComponent, action, "", ""}, {});
            }
        }
        for (std::size_t place = 0; place < holders.size(); ++place) {
            KeyList list = present(place);
            if (place != holder && std::erase(list, key) > 0) {
                userSets(place, list);
            }
            std::erase(wanted[place], key);
        }
        KeyList list = present(holder);
        if (std::ranges::find(list, key) == list.end()) {
            list.push_back(key);
        }
        userSets(holder, list);
    }

    MessageBus& daemon;
    FakeKWin kwin{daemon.address()};
    linux::MainLoop loop;
    LogRecord log;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;
    std::vector<EventHotKeyRef> references;
    bool hasConsent = false;
    /// Each holder's keys by its user's wish; if the user changes the list meanwhile, the borrowed key is given up.
    std::map<std::size_t, KeyList> wanted;
    std::map<std::size_t, std::set<std::int32_t>> had;
    /// Whether the user has changed nothing so far.
    bool isUntouched = true;
};

class BorrowingProperties : public testing::TestWithParam<bool> {};

TEST_P(BorrowingProperties, NoKeyOfAUserIsLostWhateverHappensInWhateverOrder) {
    MessageBus daemon;
    daemon.start();
    BorrowingSession session(daemon, GetParam());
    EXPECT_TRUE(rc::check("starts, kills at any call, ends, choices and changes in the settings", [&] {
        session.deal();
        const int steps = *rc::gen::inRange(1, 12);
        for (int step = 0; step < steps; ++step) {
            session.step();
        }
        session.settle();
    }));
}

INSTANTIATE_TEST_SUITE_P(Plasma, BorrowingProperties, testing::Bool(), [](const auto& shares) {
    return shares.param ? "ThatGrantsAKeyTwice" : "ThatGrantsAKeyOnce";
});

} // namespace
} // namespace platform::kwin
