#include "Platform/Compositor/WindowTable.h"
#include "SimulatedWindowAccess.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace platform::compositor {
namespace {

/// Records its notifications: "+a" (new), "*a" (was there), "~a" (identity), "!a" (ready), "-a" (gone).
class Diary final : public WindowTable::Follower {
public:
    void windowAppeared(const WindowIdentifier& identifier, const Window& /*window*/, bool wasThere) override {
        reported.push_back((wasThere ? "*" : "+") + identifier);
    }

    void windowChangedIdentity(const WindowIdentifier& identifier, const Window& /*window*/) override {
        reported.push_back("~" + identifier);
    }

    void windowBecameReady(const WindowIdentifier& identifier, const Window& /*window*/) override {
        reported.push_back("!" + identifier);
    }

    void windowVanished(const WindowIdentifier& identifier, const Window& /*window*/) override {
        reported.push_back("-" + identifier);
    }

    [[nodiscard]] std::vector<std::string> take() { return std::exchange(reported, {}); }

private:
    std::vector<std::string> reported;
};

using Reports = std::vector<std::string>;
using Identifiers = std::vector<WindowIdentifier>;

Window unreadyWindow() {
    Window window = readyWindow(7);
    window.isReady = false;
    return window;
}

WindowTable::Contents contents(const Identifiers& identifiers) {
    WindowTable::Contents all;
    for (const WindowIdentifier& identifier : identifiers) {
        all.windows.emplace_back(identifier, readyWindow(7));
    }
    return all;
}

TEST(WindowTable, AWholeStateThatIsReadAgainTellsWhatHasChanged) {
    WindowTable table;
    Diary diary;
    table.setFollower(diary);
    table.open(contents({"a", "b"}));
    static_cast<void>(diary.take());
    WindowTable::Contents next = contents({"b", "c"});
    next.focused = "c";
    next.outputs = {{.frame = {{0, 0}, {100, 100}}, .workArea = {{0, 10}, {100, 90}}}};
    table.update(next);
    EXPECT_EQ(diary.take(), (Reports{"-a", "+c", "!c"}));
    EXPECT_EQ(table.windows(), (Identifiers{"b", "c"}));
    EXPECT_EQ(table.focused(), "c");
    EXPECT_EQ(table.outputs(), next.outputs);
    table.update(contents({"b", "c"}));
    EXPECT_EQ(diary.take(), Reports{});
    EXPECT_EQ(table.focused(), std::nullopt);
}

TEST(WindowTable, WindowsAtTheBeginningOfTheAccessWereThere) {
    WindowTable table;
    Diary diary;
    table.setFollower(diary);
    EXPECT_FALSE(table.isOpen());
    table.open(contents({"z", "a"}));
    EXPECT_TRUE(table.isOpen());
    EXPECT_EQ(diary.take(), (Reports{"*z", "!z", "*a", "!a"}));
    EXPECT_EQ(table.windows(), (Identifiers{"z", "a"}));
    EXPECT_EQ(table.arrivalOf("a"), 0U);
    EXPECT_EQ(table.lastArrival(), 0U);
}

TEST(WindowTable, ALateFollowerIsNotifiedOfKnownWindows) {
    WindowTable table;
    table.open(contents({"b"}));
    table.put("a", unreadyWindow());
    Diary diary;
    table.setFollower(diary);
    EXPECT_EQ(diary.take(), (Reports{"*b", "!b", "*a"}));
}

TEST(WindowTable, ANewWindowIsReportedWhenItAppearsAndWhenItIsReady) {
    WindowTable table;
    Diary diary;
    table.setFollower(diary);
    table.open({});
    table.put("a", unreadyWindow());
    EXPECT_EQ(diary.take(), Reports{"+a"});
    Window named = unreadyWindow();
    named.clues.applicationId = "editor";
    table.put("a", named);
    EXPECT_EQ(diary.take(), Reports{"~a"});
    named.isReady = true;
    table.put("a", named);
    table.put("a", named);
    EXPECT_EQ(diary.take(), Reports{"!a"});
    table.put("a", unreadyWindow());
    EXPECT_TRUE(table.find("a")->isReady) << "a window that was ready once stays so";
    table.put("b", readyWindow(7));
    EXPECT_EQ(diary.take(), (Reports{"~a", "+b", "!b"}));
    EXPECT_EQ(table.arrivalOf("a"), 1U);
    EXPECT_EQ(table.arrivalOf("b"), 2U);
    EXPECT_EQ(table.lastArrival(), 2U);
}

TEST(WindowTable, LostAccessMakesNoWindowVanish) {
    WindowTable table;
    Diary diary;
    table.open(contents({"a", "b"}));
    table.setFocused("a");
    table.setFollower(diary);
    static_cast<void>(diary.take());
    table.close();
    EXPECT_EQ(table.focused(), std::nullopt);
    EXPECT_EQ(diary.take(), Reports{});
    table.open(contents({"b", "c"}));
    EXPECT_EQ(diary.take(), (Reports{"-a", "*c", "!c"}));
    EXPECT_EQ(table.windows(), (Identifiers{"b", "c"}));
}

TEST(WindowTable, AFocusedWindowThatVanishesLeavesNoFocus) {
    WindowTable table;
    table.open(contents({"a", "b"}));
    table.setFocused("b");
    table.remove("a");
    EXPECT_EQ(table.focused(), "b");
    table.remove("b");
    EXPECT_EQ(table.focused(), std::nullopt);
    table.remove("b");
}

RC_GTEST_PROP(WindowTable, TheOrderIsThatOfAppearanceAndEveryWindowIsToldOnceToComeAndOnceToGo, ()) {
    WindowTable table;
    Diary diary;
    table.setFollower(diary);
    Identifiers model;
    Reports expected;
    const auto forget = [&](const WindowIdentifier& identifier) {
        std::erase(model, identifier);
        expected.push_back("-" + identifier);
    };
    const auto knows = [&](const WindowIdentifier& identifier) {
        return std::ranges::find(model, identifier) != model.end();
    };
    const auto anyName = rc::gen::map(rc::gen::inRange('a', 'h'), [](char letter) { return std::string(1, letter); });
    const auto steps = *rc::gen::container<std::vector<std::pair<int, WindowIdentifier>>>(
        rc::gen::pair(rc::gen::inRange(0, 5), anyName));
    for (const auto& [step, name] : steps) {
        if (step < 2) {
            table.put(name, readyWindow(7));
            if (!knows(name)) {
                model.push_back(name);
                expected.insert(expected.end(), {"+" + name, "!" + name});
            }
        } else if (step < 4) {
            table.remove(name);
            if (knows(name)) {
                forget(name);
            }
        } else {
            const auto present = *rc::gen::unique<Identifiers>(anyName);
            table.close();
            table.open(contents(present));
            for (const WindowIdentifier& known : Identifiers(model)) {
                if (std::ranges::find(present, known) == present.end()) {
                    forget(known);
                }
            }
            for (const WindowIdentifier& each : present) {
                if (!knows(each)) {
                    model.push_back(each);
                    expected.insert(expected.end(), {"*" + each, "!" + each});
                }
            }
        }
        RC_ASSERT(table.windows() == model);
        RC_ASSERT(diary.take() == expected);
        expected.clear();
    }
}

} // namespace
} // namespace platform::compositor
