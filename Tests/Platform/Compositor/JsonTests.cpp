#include "Platform/Compositor/Json.h"

#include <gtest/gtest.h>

#include <string>

namespace platform::compositor {
namespace {

TEST(CompositorJson, BytesThatAreNotUtf8AreReplacedWhereTheyStand) {
    const struct {
        std::string told;
        std::string read;
    } cases[] = {
        {"caf\xe9", "caf\uFFFD"},
        {"caf\u00e9", "caf\u00e9"},
        {"\xff\xfe", "\uFFFD\uFFFD"},
        // Overlong, a surrogate, beyond the last character, and cut off.
        {"\xc0\xaf", "\uFFFD\uFFFD"},
        {"\xed\xa0\x80", "\uFFFD\uFFFD\uFFFD"},
        {"\xf4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xe2\x82", "\uFFFD\uFFFD"},
    };
    for (const auto& [told, read] : cases) {
        const auto value = parsedJson(R"({"name":")" + told + R"(","id":7})");
        ASSERT_TRUE(value) << read;
        EXPECT_EQ(value->at("name"), read);
        EXPECT_EQ(value->at("id"), 7);
    }
}

TEST(CompositorJson, WhatIsNoJsonIsNothing) {
    for (const char* text : {"", "{", "garbage", "\xff", "{\"a\":\"\xff", "{\"a\":1}\xe9", "[\xc3]"}) {
        EXPECT_EQ(parsedJson(text), std::nullopt) << text;
    }
    EXPECT_EQ(parsedJson({}), std::nullopt);
}

TEST(CompositorJson, BracketsCountOnlyOutsideOfTexts) {
    const std::string brackets(10'000, '[');
    EXPECT_EQ(parsedJson(brackets), std::nullopt);
    EXPECT_EQ(parsedJson(brackets + std::string(10'000, ']')), std::nullopt);
    const auto value = parsedJson(R"({"name":"\\\"{)" + brackets + R"(","after":[[[]]]})");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->at("name"), "\\\"{" + brackets);
}

} // namespace
} // namespace platform::compositor
