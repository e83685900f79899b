#include "CorvidKitCore/PropertyListValue.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>

namespace {

using corvid::Data;
using corvid::PropertyListValue;
using Dictionary = PropertyListValue::Dictionary;

/// The number of accessors that return a value for it.
int kinds(const PropertyListValue& value) {
    return int{value.boolean().has_value()} + int{value.integer().has_value()} + int{value.real().has_value()} +
           int{value.text() != nullptr} + int{value.data() != nullptr} + int{value.dictionary() != nullptr};
}

TEST(PropertyListValue, IsOfExactlyTheKindItWasMadeFrom) {
    EXPECT_EQ(PropertyListValue{true}.boolean(), true);
    EXPECT_EQ(PropertyListValue{5}.integer(), 5);
    EXPECT_EQ(PropertyListValue{2.5}.real(), 2.5);
    EXPECT_EQ(*PropertyListValue{"text"}.text(), "text");
    EXPECT_EQ(*PropertyListValue{std::string{"text"}}.text(), "text");
    EXPECT_EQ(*PropertyListValue{Data{std::byte{7}}}.data(), Data{std::byte{7}});
    EXPECT_EQ(*(PropertyListValue{Dictionary{{"key", 1}}}.dictionary()), (Dictionary{{"key", 1}}));
    for (const PropertyListValue& value :
         {PropertyListValue{true}, PropertyListValue{5}, PropertyListValue{2.5}, PropertyListValue{"text"},
          PropertyListValue{Data{}}, PropertyListValue{Dictionary{}}}) {
        EXPECT_EQ(kinds(value), 1);
    }
}

TEST(PropertyListValue, KeepsBooleansAndIntegersApart) {
    EXPECT_NE(PropertyListValue{true}, PropertyListValue{1});
    EXPECT_NE(PropertyListValue{false}, PropertyListValue{0});
    EXPECT_EQ(PropertyListValue{true}.integer(), std::nullopt);
    EXPECT_EQ(PropertyListValue{1}.boolean(), std::nullopt);
}

TEST(PropertyListValue, KeepsIntegersAndFloatsApart) {
    EXPECT_NE(PropertyListValue{1}, PropertyListValue{1.0});
    EXPECT_EQ(PropertyListValue{1}.real(), std::nullopt);
    EXPECT_EQ(PropertyListValue{1.0}.integer(), std::nullopt);
}

TEST(PropertyListValue, HoldsEveryIntegerFromTheSmallestToTheLargest) {
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(PropertyListValue{Limits::min()}.integer(), Limits::min());
    EXPECT_EQ(PropertyListValue{Limits::max()}.integer(), Limits::max());
    EXPECT_EQ(PropertyListValue{std::numeric_limits<std::uint32_t>::max()}.integer(), 4294967295);
}

TEST(PropertyListValue, CannotBeMadeFromWhatWouldTurnIntoAnotherKind) {
    static_assert(!std::constructible_from<PropertyListValue, std::uint64_t>);
    static_assert(!std::constructible_from<PropertyListValue, const int*>);
    static_assert(!std::constructible_from<PropertyListValue, const void*>);
    static_assert(std::is_nothrow_move_constructible_v<PropertyListValue>);
    // A string literal is the risk: a pointer converts to a boolean.
    EXPECT_EQ(PropertyListValue{"false"}.boolean(), std::nullopt);
}

TEST(PropertyListValue, NestsDictionaries) {
    const PropertyListValue value{Dictionary{{"outer", Dictionary{{"inner", true}}}}};
    const PropertyListValue copy = value;
    EXPECT_EQ(copy, value);
    EXPECT_EQ(copy.dictionary()->at("outer").dictionary()->at("inner").boolean(), true);
}

} // namespace
