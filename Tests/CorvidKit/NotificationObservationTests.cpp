#include "CorvidKit/Concurrency.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvid {
namespace {

using platform::Notification;
using platform::NotificationCenter;

class Observations : public testing::Test {
protected:
    NotificationObservation::Handler count() {
        return [this](const Notification&) { ++reported; };
    }

    platform::simulated::Desktop desktop;
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
    int reported = 0;
};

TEST_F(Observations, AreNotifiedOfTheirNameAndOfNoOther) {
    const NotificationObservation observation("launch", center, count());
    center->post({.name = "launch", .userInfo = {}});
    center->post({.name = "end", .userInfo = {}});
    EXPECT_EQ(reported, 1);
}

TEST_F(Observations, AreHandedTheNotification) {
    std::string name;
    const NotificationObservation observation("launch", center,
                                              [&](const Notification& notification) { name = notification.name; });
    center->post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(name, "launch");
}

TEST_F(Observations, AreNotNotifiedAfterTheirEnd) {
    std::optional<NotificationObservation> observation;
    observation.emplace("launch", center, count());
    observation.reset();
    center->post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 0);
}

TEST_F(Observations, DestroyedDuringADeliveryAreNotNotifiedOfIt) {
    std::optional<NotificationObservation> second;
    const NotificationObservation first("launch", center, [&](const Notification&) { second.reset(); });
    second.emplace("launch", center, count());
    center->post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 0);
}

TEST_F(Observations, MayBeDroppedByTheirOwnHandler) {
    std::string seen;
    std::optional<NotificationObservation> observation;
    observation.emplace("launch", center,
                        [&, text = std::string("a text too long to be kept in place")](const Notification&) {
                            observation.reset();
                            seen += text;
                        });
    center->post({.name = "launch", .userInfo = {}});
    center->post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(seen, "a text too long to be kept in place");
}

TEST_F(Observations, MovedGoOnAndEndWithTheirLastOwner) {
    NotificationObservation observation("launch", center, count());
    {
        const NotificationObservation owner = std::move(observation);
        center->post({.name = "launch", .userInfo = {}});
        EXPECT_EQ(reported, 1);
    }
    center->post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 1);
}

TEST_F(Observations, AssignedOverEnd) {
    int reportedInstead = 0;
    NotificationObservation observation("launch", center, count());
    observation = NotificationObservation("launch", center, [&](const Notification&) { ++reportedInstead; });
    center->post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 0);
    EXPECT_EQ(reportedInstead, 1);
}

TEST_F(Observations, EndWhenTheListThatHoldsThemIsEmptied) {
    std::vector<NotificationObservation> observations;
    observations.emplace_back("launch", center, count());
    observations.emplace_back("end", center, count());
    center->post({.name = "launch", .userInfo = {}});
    center->post({.name = "end", .userInfo = {}});
    EXPECT_EQ(reported, 2);
    observations.clear();
    center->post({.name = "launch", .userInfo = {}});
    center->post({.name = "end", .userInfo = {}});
    EXPECT_EQ(reported, 2);
}

TEST_F(Observations, HoldTheirCenter) {
    const std::weak_ptr<NotificationCenter> watched = center;
    std::optional<NotificationObservation> observation;
    observation.emplace("launch", center, count());
    center.reset();
    EXPECT_FALSE(watched.expired());
    observation.reset();
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace corvid
