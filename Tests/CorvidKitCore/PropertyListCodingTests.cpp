#include "CorvidKitCore/PropertyListCoding.h"
#include "CorvidKitCore/Shortcut.h"
#include "Tests/CorvidKitCore/Printing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <expected>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using corvid::DecodingError;
using corvid::PropertyListDecoder;
using corvid::PropertyListEncoder;
using corvid::PropertyListValue;
using corvid::Shortcut;
using Dictionary = PropertyListValue::Dictionary;
using Kind = DecodingError::Kind;

std::expected<Shortcut, DecodingError> decode(const PropertyListValue& coded) {
    return Shortcut::decode(PropertyListDecoder{coded});
}

TEST(ShortcutCoding, WritesTheKeyCodeAndThenTheModifiers) {
    struct Recorder {
        std::vector<std::pair<std::string, std::uint32_t>> entries;

        void encode(std::uint32_t number, std::string_view key) { entries.emplace_back(key, number); }
    };

    Recorder recorder;
    Shortcut{.keyCode = 123, .modifiers = 6144}.encode(recorder);
    EXPECT_EQ(recorder.entries,
              (std::vector<std::pair<std::string, std::uint32_t>>{{"keyCode", 123U}, {"modifiers", 6144U}}));
}

TEST(ShortcutCoding, RebuildsWhatItWrote) {
    constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();
    for (const Shortcut shortcut : {Shortcut::none, Shortcut{.keyCode = 123, .modifiers = 6144},
                                    Shortcut{.keyCode = largest, .modifiers = largest}}) {
        PropertyListEncoder encoder;
        shortcut.encode(encoder);
        ASSERT_TRUE(encoder.value());
        EXPECT_EQ(decode(*encoder.value()), shortcut);
    }
}

RC_GTEST_PROP(ShortcutCoding, EveryPairOf32BitValuesSurvivesCoding, ()) {
    const auto field = rc::gen::inRange<std::uint64_t>(0, 1ULL << 32U);
    const Shortcut shortcut{.keyCode = static_cast<std::uint32_t>(*field),
                            .modifiers = static_cast<std::uint32_t>(*field)};
    PropertyListEncoder encoder;
    shortcut.encode(encoder);
    RC_ASSERT(encoder.value().has_value());
    const auto decoded = decode(*encoder.value());
    RC_ASSERT(decoded.has_value());
    RC_ASSERT(*decoded == shortcut);
}

TEST(ShortcutCoding, SaysWhichEntryIsMissing) {
    const auto noKeyCode = decode(Dictionary{{"modifiers", 6144}});
    ASSERT_FALSE(noKeyCode);
    EXPECT_EQ(noKeyCode.error().kind, Kind::keyNotFound);
    EXPECT_EQ(noKeyCode.error().key, "keyCode");

    const auto noModifiers = decode(Dictionary{{"keyCode", 123}});
    ASSERT_FALSE(noModifiers);
    EXPECT_EQ(noModifiers.error().kind, Kind::keyNotFound);
    EXPECT_EQ(noModifiers.error().key, "modifiers");
}

TEST(ShortcutCoding, RefusesWhatDoesNotFitInto32Bits) {
    for (const std::int64_t number : {std::int64_t{-1}, std::int64_t{4294967296}}) {
        const auto decoded = decode(Dictionary{{"keyCode", 123}, {"modifiers", number}});
        ASSERT_FALSE(decoded);
        EXPECT_EQ(decoded.error().kind, Kind::dataCorrupted);
        EXPECT_EQ(decoded.error().key, "modifiers");
    }
}

TEST(ShortcutCoding, RefusesAnotherKind) {
    EXPECT_EQ(decode(Dictionary{{"keyCode", "123"}, {"modifiers", 6144}}).error().kind, Kind::typeMismatch);
    EXPECT_EQ(decode(Dictionary{{"keyCode", true}, {"modifiers", 6144}}).error().kind, Kind::typeMismatch);
    EXPECT_EQ(decode("keyCode").error().kind, Kind::typeMismatch);
}

} // namespace
