#include "CorvidKit/Publisher.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;

TEST(Publisher, NotifiesSubscribersInOrderUntilTheyEnd) {
    Publisher<int> publisher;
    Lines reported;
    const Subscription first = publisher.subscribe([&](int value) { reported.push_back("a" + std::to_string(value)); });
    {
        const Subscription second =
            publisher.subscribe([&](int value) { reported.push_back("b" + std::to_string(value)); });
        publisher.send(1);
    }
    publisher.send(2);
    EXPECT_EQ(reported, (Lines{"a1", "b1", "a2"}));
}

TEST(Publisher, SubscriptionsMayEndDuringAnEmission) {
    Publisher<> publisher;
    Lines reported;
    Subscription own;
    Subscription second;
    own = publisher.subscribe([&, text = std::string("a text too long to be kept in place")] {
        own = {};
        second = {};
        reported.push_back(text);
    });
    second = publisher.subscribe([&] { reported.emplace_back("second"); });
    publisher.send();
    publisher.send();
    EXPECT_EQ(reported, (Lines{"a text too long to be kept in place"}));
}

TEST(Publisher, SubscribersAddedDuringAnEmissionWaitForTheNext) {
    Publisher<> publisher;
    int reported = 0;
    Subscription second;
    const Subscription first = publisher.subscribe([&] { second = publisher.subscribe([&] { ++reported; }); });
    publisher.send();
    EXPECT_EQ(reported, 0);
    publisher.send();
    EXPECT_EQ(reported, 0) << "the replaced subscriber is not notified";
}

TEST(Publisher, SubscriptionsMayOutliveIt) {
    Subscription subscription;
    {
        Publisher<> publisher;
        subscription = publisher.subscribe([] {});
    }
    subscription = {};
}

TEST(Publisher, MayBeDroppedByASubscriber) {
    std::optional<Publisher<>> publisher(std::in_place);
    int reported = 0;
    const Subscription first = publisher->subscribe([&] {
        publisher.reset();
        ++reported;
    });
    const Subscription second = publisher->subscribe([&] { ++reported; });
    publisher->send();
    EXPECT_EQ(reported, 2);
}

TEST(Publisher, AMovedSubscriptionGoesOn) {
    Publisher<> publisher;
    int reported = 0;
    Subscription first = publisher.subscribe([&] { ++reported; });
    Subscription second = std::move(first);
    publisher.send();
    EXPECT_EQ(reported, 1);
    second = Subscription();
    publisher.send();
    EXPECT_EQ(reported, 1);
}

} // namespace
} // namespace corvid
