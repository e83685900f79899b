#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "CorvidKitCore/UpdateReminder.h"
#include "Tests/CorvidKitCore/Printing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvid {
namespace {

using Dictionary = PropertyListValue::Dictionary;

constexpr double present = 1'700'000'000;
constexpr double day = 86'400;

/// A store that records the writes to it.
class NotingStore final : public PreferenceStore {
public:
    explicit NotingStore(Dictionary values = {})
        : store(std::move(values)) {}

    [[nodiscard]] std::optional<PropertyListValue> object(std::string_view key) const override {
        return store.object(key);
    }

    void set(std::optional<PropertyListValue> value, std::string_view key) override {
        written.emplace_back(key);
        store.set(std::move(value), key);
    }

    InMemoryPreferenceStore store;
    std::vector<std::string> written;
};

Dictionary period(std::string_view version, double since) {
    return {{"updateReminderVersion", version}, {"updateReminderSince", since}};
}

const std::vector<std::string> both{"updateReminderVersion", "updateReminderSince"};

TEST(UpdateReminder, StartsAPeriodAtTheFirstLaunchAndIsDueThirtyDaysLaterToTheSecond) {
    NotingStore store;
    const UpdateReminder reminder(store, "1.2", dateOf(present));
    EXPECT_EQ(store.written, both);
    EXPECT_EQ(store.store.values, period("1.2", present));
    EXPECT_EQ(reminder.since(), dateOf(present));
    EXPECT_FALSE(reminder.isDue(dateOf(present)));
    EXPECT_FALSE(reminder.isDue(dateOf(present + 2'591'999)));
    EXPECT_TRUE(reminder.isDue(dateOf(present + 2'592'000)));
}

TEST(UpdateReminder, GoesOnWithThePeriodOfTheSameVersion) {
    NotingStore store(period("1.2", present - 31 * day));
    const UpdateReminder reminder(store, "1.2", dateOf(present));
    EXPECT_EQ(store.written, std::vector<std::string>{});
    EXPECT_TRUE(reminder.isDue(dateOf(present)));
}

TEST(UpdateReminder, StartsAPeriodWhereTheStoredOneCannotBeTrusted) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Dictionary> untrusted{
        period("1.1", present - 31 * day),
        period("", present - 31 * day),
        period("1.2", present + day),
        period("1.2", present + 0.001),
        period("1.2", infinity),
        period("1.2", noNumber),
        {{"updateReminderVersion", "1.2"}},
        {{"updateReminderSince", present - 31 * day}},
        {{"updateReminderVersion", 12}, {"updateReminderSince", present - 31 * day}},
        {{"updateReminderVersion", "1.2"}, {"updateReminderSince", "yesterday"}},
        {{"updateReminderVersion", "1.2"}, {"updateReminderSince", Dictionary{}}},
    };
    for (const Dictionary& stored : untrusted) {
        NotingStore store(stored);
        const UpdateReminder reminder(store, "1.2", dateOf(present));
        EXPECT_EQ(store.written, both);
        EXPECT_EQ(store.store.values, period("1.2", present));
        EXPECT_FALSE(reminder.isDue(dateOf(present)));
    }
}

TEST(UpdateReminder, TrustsAStartAtThisVeryMoment) {
    NotingStore store(period("1.2", present));
    const UpdateReminder reminder(store, "1.2", dateOf(present));
    EXPECT_EQ(store.written, std::vector<std::string>{});
}

TEST(UpdateReminder, RestartedKeepsTheVersionAndCountsFromThen) {
    NotingStore store(period("1.2", present - 31 * day));
    UpdateReminder reminder(store, "1.2", dateOf(present));
    reminder.restart(dateOf(present + 0.5));
    EXPECT_EQ(store.written, std::vector<std::string>{"updateReminderSince"});
    EXPECT_EQ(reminder.since(), dateOf(present + 0.5));
    EXPECT_FALSE(reminder.isDue(dateOf(present + UpdateReminder::interval)));
    EXPECT_TRUE(reminder.isDue(dateOf(present + 0.5 + UpdateReminder::interval)));
}

TEST(UpdateReminder, IsNeverDueWithoutAStartOrBeforeIt) {
    NotingStore store;
    const UpdateReminder reminder(store, "1.2", dateOf(present));
    EXPECT_FALSE(reminder.isDue(dateOf(present - 31 * day))) << "the clock was set back";
    store.store.values.erase("updateReminderSince");
    EXPECT_EQ(reminder.since(), std::nullopt);
    EXPECT_FALSE(reminder.isDue(dateOf(present + 31 * day)));
    store.store.values.insert_or_assign("updateReminderSince", std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(reminder.isDue(dateOf(present + 31 * day)));
}

} // namespace
} // namespace corvid
