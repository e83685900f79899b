#include "Platform/Linux/HotKeys/Registrations.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

struct HotKey {
    std::string keys;
    bool isBound = false;
};

class RegistrationsTest : public testing::Test {
protected:
    HotKeyEvents::Registration add(const std::string& keys, OSStatus outcome = noErr) {
        return registrations.add({.keys = keys}, &HotKey::keys, [&](std::uint64_t number, HotKey& hotKey) {
            bound.push_back(number);
            hotKey.isBound = true;
            return outcome;
        });
    }

    Registrations<HotKey> registrations;
    std::vector<std::uint64_t> bound;
};

TEST_F(RegistrationsTest, AHotKeyIsBoundWithTheNumberOfItsReference) {
    const auto registration = add("left");
    EXPECT_EQ(registration.status, noErr);
    ASSERT_TRUE(registration.reference.has_value());
    EXPECT_EQ(bound, std::vector{registration.reference->value});
    const HotKey* hotKey = registrations.find(registration.reference->value);
    ASSERT_NE(hotKey, nullptr);
    EXPECT_TRUE(hotKey->isBound);
}

TEST_F(RegistrationsTest, TheSameKeysAreRefusedWithoutBeingBoundAgain) {
    static_cast<void>(add("left"));
    const auto second = add("left");
    EXPECT_EQ(second.status, eventHotKeyExistsErr);
    EXPECT_EQ(second.reference, std::nullopt);
    EXPECT_EQ(bound.size(), 1U);
    EXPECT_EQ(add("right").status, noErr);
}

TEST_F(RegistrationsTest, AHotKeyThatCannotBeBoundIsForgotten) {
    EXPECT_EQ(add("left", eventHotKeyInvalidErr).status, eventHotKeyInvalidErr);
    EXPECT_EQ(registrations.begin(), registrations.end());
    EXPECT_EQ(add("left").status, noErr);
}

TEST_F(RegistrationsTest, ARemovedOneIsReturnedOnceAndItsNumberIsNotUsedAgain) {
    const auto first = add("left");
    ASSERT_TRUE(first.reference.has_value());
    EXPECT_TRUE(registrations.remove(*first.reference).has_value());
    EXPECT_FALSE(registrations.remove(*first.reference).has_value());
    EXPECT_EQ(registrations.find(first.reference->value), nullptr);
    EXPECT_NE(add("left").reference, first.reference);
}

} // namespace
} // namespace platform::linux
