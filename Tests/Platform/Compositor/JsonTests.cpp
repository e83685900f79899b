#include "Platform/Compositor/Json.h"

#include <gtest/gtest.h>

#include <string>

namespace platform::compositor {
namespace {

TEST(CompositorJson, BytesThatAreNotUtf8AreReplacedWhereTheyStand) {
    const struct {
        std::string reported;
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
    for (const auto& [reported, read] : cases) {
        const auto value = parsedJson(R"({"name":")" + reported + R"(","id":7})");
        ASSERT_TRUE(value) << read;
        EXPECT_EQ(value->at("name"), read);
        EXPECT_EQ(value->at("id"), 7);
    }
}

TEST(CompositorJson, TextThatIsNoJsonIsNothing) {
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

TEST(CompositorJson, ARectangleIsFourNumbersInAListOrByTheirNames) {
    const corvid::CGRect rectangle{{-1, 2.5}, {3, 0}};
    for (const char* text : {R"({"frame":[-1,2.5,3,0]})", R"({"frame":{"x":-1,"y":2.5,"width":3,"height":0}})"}) {
        EXPECT_EQ(rectangleOf(*parsedJson(text), "frame"), rectangle) << text;
    }
    for (const char* text : {"[]", "{}", R"({"frame":[1,2,3]})", R"({"frame":[1,2,3,4,5]})", R"({"frame":[1,2,-3,4]})",
                             R"({"frame":[1,2,3,1e300]})", R"({"frame":[1,2,3,1e999]})", R"({"frame":[1,2,3,"4"]})",
                             R"({"frame":{"x":1,"y":2,"width":3}})", R"({"frame":7})"}) {
        const auto value = parsedJson(text);
        EXPECT_EQ(value ? rectangleOf(*value, "frame") : std::nullopt, std::nullopt) << text;
    }
    EXPECT_EQ(rectangleIn(*parsedJson("[7,-1,2.5,3,0,true]"), 1), rectangle);
    EXPECT_EQ(rectangleIn(*parsedJson("[7,-1,2.5,3]"), 1), std::nullopt);
}

TEST(CompositorJson, AMemberOfAnotherTypeCountsAsNone) {
    const auto value =
        parsedJson(R"({"text":"7","number":7,"large":18446744073709551615,"fraction":1.5,"yes":true,"list":[1]})");
    ASSERT_TRUE(value);
    for (const char* name : {"text", "large", "fraction", "yes", "list", "none"}) {
        EXPECT_EQ(numberOf(*value, name), std::nullopt) << name;
        EXPECT_EQ(processOf(*value, name), 0) << name;
    }
    EXPECT_EQ(numberOf(*value, "number"), 7);
    EXPECT_EQ(processOf(*value, "number"), 7);
    for (const char* name : {"number", "yes", "list", "none"}) {
        EXPECT_EQ(textOf(*value, name).data(), nullptr) << name;
    }
    EXPECT_EQ(textOf(*value, "text"), "7");
    EXPECT_TRUE(isSet(*value, "yes"));
    EXPECT_FALSE(isSet(*value, "number"));
    EXPECT_NE(listIn(*value, "list"), nullptr);
    EXPECT_EQ(listIn(*value, "text"), nullptr);
    EXPECT_EQ(textOf(Json::array(), "text").data(), nullptr);
}

} // namespace
} // namespace platform::compositor
