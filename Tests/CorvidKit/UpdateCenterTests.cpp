#include "CorvidKit/UpdateCenter.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
using Days = std::chrono::duration<std::int64_t, std::ratio<86'400>>;

class Updates : public testing::Test {
protected:
    UpdateCenter& make() {
        made.emplace("tessel", "1.2", desktop.standardUserDefaults, [this] { return desktop.systemClock.now(); });
        return *made;
    }

    void storePeriod(const char* version, std::chrono::duration<double> age) {
        auto& values = desktop.standardUserDefaults.store.values;
        values.insert_or_assign("updateReminderVersion", version);
        values.insert_or_assign("updateReminderSince", secondsSince1970(desktop.systemClock.now() - age));
    }

    double storedSince() { return *desktop.standardUserDefaults.store.values.at("updateReminderSince").real(); }

    double present() { return secondsSince1970(desktop.systemClock.now()); }

    platform::simulated::Desktop desktop;
    std::optional<UpdateCenter> made;
};

TEST_F(Updates, AreNotDueAtTheFirstLaunch) {
    EXPECT_FALSE(make().updateReminderDue());
    EXPECT_EQ(desktop.standardUserDefaults.store.values.at("updateReminderVersion"), PropertyListValue("1.2"));
    EXPECT_EQ(storedSince(), present());
}

TEST_F(Updates, AreDueAtOnceWhenThirtyDaysHavePassed) {
    storePeriod("1.2", Days(31));
    EXPECT_TRUE(make().updateReminderDue());
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
}

TEST_F(Updates, AreLookedAtOnceAnHour) {
    storePeriod("1.2", Days(30) - 90min);
    UpdateCenter& center = make();
    using Waiting = platform::simulated::MainActor::Waiting;
    EXPECT_EQ(desktop.mainActor.waiting(), (std::vector<Waiting>{{platform::Instant(3600s), 10s}}));
    desktop.mainActor.advance(90min);
    EXPECT_FALSE(center.updateReminderDue()) << "thirty days are over, but nobody has looked";
    desktop.mainActor.advance(30min);
    EXPECT_TRUE(center.updateReminderDue());
}

TEST_F(Updates, AreNoLongerDueOnceTheClockIsSetBack) {
    storePeriod("1.2", Days(30));
    UpdateCenter& center = make();
    EXPECT_TRUE(center.updateReminderDue());
    desktop.systemClock.adjust(-1s);
    center.refresh();
    EXPECT_FALSE(center.updateReminderDue());
}

TEST_F(Updates, CheckedForOpenThePageThenStartThePeriodAnew) {
    storePeriod("1.2", Days(31));
    UpdateCenter& center = make();
    desktop.trace.clear();
    center.checkForUpdates();
    EXPECT_EQ(desktop.trace.take(), (Lines{"open https://tessel.example/updates/?app=tessel&version=1.2",
                                           "write setting updateReminderSince"}));
    EXPECT_FALSE(center.updateReminderDue());
    EXPECT_EQ(storedSince(), present());
    desktop.mainActor.advance(Days(30) - 1h);
    EXPECT_FALSE(center.updateReminderDue());
    desktop.mainActor.advance(1h);
    EXPECT_TRUE(center.updateReminderDue()) << "it comes back for the same version";
}

TEST_F(Updates, CheckedForAreDismissedEvenWhenNothingOpensThePage) {
    storePeriod("1.2", Days(31));
    desktop.addressOpener.refuse("https://tessel.example/updates/?app=tessel&version=1.2");
    UpdateCenter& center = make();
    center.checkForUpdates();
    EXPECT_FALSE(center.updateReminderDue());
    EXPECT_EQ(storedSince(), present());
}

TEST_F(Updates, DismissedStartThePeriodAnewWithoutThePage) {
    storePeriod("1.2", Days(31));
    UpdateCenter& center = make();
    center.dismissUpdateReminder();
    EXPECT_EQ(desktop.trace.take("open"), Lines{});
    EXPECT_FALSE(center.updateReminderDue());
    EXPECT_EQ(storedSince(), present());
}

TEST_F(Updates, ReportTheirFlagAtSubscriptionAndBeforeEachChange) {
    storePeriod("1.2", Days(31));
    UpdateCenter& center = make();
    std::vector<std::pair<bool, bool>> reported;
    const Subscription subscription = center.updateReminderDueFlag().subscribe(
        [&](const bool& next) { reported.emplace_back(next, center.updateReminderDue()); });
    center.dismissUpdateReminder();
    center.refresh();
    EXPECT_EQ(reported, (std::vector<std::pair<bool, bool>>{{true, true}, {false, true}, {false, false}}));
}

TEST_F(Updates, DroppedAreLookedAtNoMore) {
    make();
    made.reset();
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
}

TEST_F(Updates, InAPreviewShowTheFlagAndStoreNothing) {
    UpdateCenter center = UpdateCenter::preview("tessel", true);
    EXPECT_TRUE(center.updateReminderDue());
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
    center.dismissUpdateReminder();
    EXPECT_FALSE(center.updateReminderDue());
    EXPECT_EQ(desktop.trace.take(), Lines{});
    UpdateCenter refreshed = UpdateCenter::preview("tessel", true);
    refreshed.refresh();
    EXPECT_FALSE(refreshed.updateReminderDue()) << "without a reminder nothing is due";
}

TEST_F(Updates, InAPreviewStillOpenThePage) {
    UpdateCenter center = UpdateCenter::preview("tessel", true);
    center.checkForUpdates();
    EXPECT_EQ(desktop.trace.take(), (Lines{"open https://tessel.example/updates/?app=tessel&version=1.2"}));
    EXPECT_FALSE(center.updateReminderDue());
}

TEST_F(Updates, OfAVersionThatCannotStandInAnAddressStopTheProcess) {
    desktop.mainBundle.infoDictionary.insert_or_assign("CFBundleShortVersionString", "1.2 beta");
    UpdateCenter& center = make();
    EXPECT_DEATH(center.checkForUpdates(), "Fatal error: not an address: https://tessel.example/updates/");
}

} // namespace
} // namespace corvid
