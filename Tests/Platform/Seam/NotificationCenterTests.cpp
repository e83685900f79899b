#include "Platform/Seam/Desktop/NotificationCenter.h"

#include <gtest/gtest.h>

#include <any>
#include <string>
#include <vector>

namespace platform {
namespace {

using Lines = std::vector<std::string>;

TEST(NotificationCenter, NotifiesTheObserversOfANameInTheOrderOfTheirRegistration) {
    NotificationCenter center;
    Lines reported;
    const auto first = center.addObserver("launch", [&](const Notification&) { reported.emplace_back("first"); });
    const auto other = center.addObserver("end", [&](const Notification&) { reported.emplace_back("other"); });
    const auto second = center.addObserver("launch", [&](const Notification&) { reported.emplace_back("second"); });
    center.post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, (Lines{"first", "second"}));
    EXPECT_NE(first, second);
    EXPECT_NE(first, other);
}

TEST(NotificationCenter, HandsOverWhatWasPosted) {
    NotificationCenter center;
    int number = 0;
    const auto token = center.addObserver("launch", [&](const Notification& notification) {
        number = std::any_cast<int>(notification.userInfo.at("number"));
    });
    center.post({.name = "launch", .userInfo = {{"number", 7}}});
    EXPECT_EQ(number, 7);
    center.removeObserver(token);
    center.post({.name = "launch", .userInfo = {{"number", 8}}});
    EXPECT_EQ(number, 7);
}

TEST(NotificationCenter, AnObserverRemovedDuringAPostIsNotNotified) {
    NotificationCenter center;
    int reported = 0;
    NotificationCenter::Token second;
    const auto first = center.addObserver("launch", [&](const Notification&) { center.removeObserver(second); });
    second = center.addObserver("launch", [&](const Notification&) { ++reported; });
    center.post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 0);
    center.removeObserver(first);
}

TEST(NotificationCenter, AnObserverMayRemoveItself) {
    NotificationCenter center;
    Lines reported;
    NotificationCenter::Token own;
    own = center.addObserver("launch", [&, word = std::string("a text too long to be kept in place")](const auto&) {
        center.removeObserver(own);
        reported.push_back(word);
    });
    center.post({.name = "launch", .userInfo = {}});
    center.post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, (Lines{"a text too long to be kept in place"}));
}

TEST(NotificationCenter, AnObserverAddedDuringAPostWaitsForTheNext) {
    NotificationCenter center;
    int reported = 0;
    std::vector<NotificationCenter::Token> tokens;
    tokens.push_back(center.addObserver("launch", [&](const Notification&) {
        tokens.push_back(center.addObserver("launch", [&](const Notification&) { ++reported; }));
    }));
    center.post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 0);
    center.post({.name = "launch", .userInfo = {}});
    EXPECT_EQ(reported, 1);
}

} // namespace
} // namespace platform
