#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "CorvidKitCore/Preference.h"
#include "CorvidKitCore/Shortcut.h"
#include "Tests/CorvidKitCore/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using corvid::Data;
using corvid::InMemoryPreferenceStore;
using corvid::Preference;
using corvid::PreferenceStore;
using corvid::PropertyListValue;
using corvid::Shortcut;
using Dictionary = PropertyListValue::Dictionary;

/// An enumeration with integers as raw values.
class Side {
public:
    enum class Case : std::uint8_t { near, far };
    using enum Case;
    using RawValue = std::int64_t;

    constexpr Side(Case side)
        : value{side} {}

    constexpr operator Case() const { return value; }

    [[nodiscard]] std::int64_t rawValue() const { return value == near ? 10 : 20; }

    static std::optional<Side> fromRawValue(std::int64_t rawValue) {
        if (rawValue == 10) {
            return near;
        }
        return rawValue == 20 ? std::optional<Side>{far} : std::nullopt;
    }

private:
    Case value;
};

template <typename Value>
Value read(const PropertyListValue& stored, const Value& defaultValue) {
    const InMemoryPreferenceStore store{{{"key", stored}}};
    return store[Preference<Value>{"key", defaultValue}];
}

template <typename Value>
std::optional<PropertyListValue> written(const Value& value) {
    InMemoryPreferenceStore store;
    store[Preference<Value>{"key", Value{}}] = value;
    return store.object("key");
}

static_assert(corvid::PreferenceValue<bool>);
static_assert(corvid::PreferenceValue<Side>);
static_assert(corvid::PreferenceValue<Shortcut>);
static_assert(corvid::PreferenceValue<std::map<std::string, std::optional<Shortcut>>>);
static_assert(!corvid::PreferenceValue<std::vector<bool>>, "collections are kept as dictionaries");
static_assert(!corvid::PreferenceValue<float>);

TEST(Preference, IsItsDefaultUntilWrittenAndAgainOnceRemoved) {
    InMemoryPreferenceStore store;
    const Preference<bool> enabled{"enabled", true};
    EXPECT_TRUE(store[enabled]);
    store[enabled] = false;
    EXPECT_FALSE(store[enabled]);
    store.set(std::nullopt, "enabled");
    EXPECT_TRUE(store[enabled]);
}

TEST(Preference, StoresPrimitivesAsTheyAre) {
    EXPECT_EQ(written(true), PropertyListValue{true});
    EXPECT_EQ(written(std::int64_t{-5}), PropertyListValue{-5});
    EXPECT_EQ(written(0.5), PropertyListValue{0.5});
    EXPECT_EQ(written(std::string{"text"}), PropertyListValue{"text"});
    EXPECT_EQ(written(Data{std::byte{0}, std::byte{255}}), (PropertyListValue{Data{std::byte{0}, std::byte{255}}}));
}

TEST(Preference, ReadsPrimitivesOfItsOwnKind) {
    EXPECT_FALSE(read(false, true));
    EXPECT_EQ(read(-5, std::int64_t{1}), -5);
    EXPECT_EQ(read(0.5, 1.0), 0.5);
    EXPECT_EQ(read("text", std::string{"default"}), "text");
    EXPECT_EQ(read(Data{std::byte{1}}, Data{}), Data{std::byte{1}});
}

TEST(Preference, IsItsDefaultWhenTheStoredKindIsAnother) {
    EXPECT_EQ(read("12", std::int64_t{7}), 7);
    EXPECT_EQ(read(Dictionary{}, std::int64_t{7}), 7);
    EXPECT_EQ(read("0.5", 7.0), 7.0);
    EXPECT_EQ(read(12, std::string{"default"}), "default");
    EXPECT_EQ(read(Data{}, std::string{"default"}), "default");
    EXPECT_EQ(read("text", Data{std::byte{9}}), Data{std::byte{9}});
    EXPECT_TRUE(read("false", true));
}

TEST(Preference, ReadsZeroAndOneAsABoolean) {
    EXPECT_FALSE(read(0, true));
    EXPECT_TRUE(read(1, false));
    EXPECT_FALSE(read(0.0, true));
    EXPECT_FALSE(read(-0.0, true));
    EXPECT_TRUE(read(1.0, false));
}

TEST(Preference, IsItsDefaultWhenTheNumberIsNoBoolean) {
    for (const bool defaultValue : {false, true}) {
        EXPECT_EQ(read(2, defaultValue), defaultValue);
        EXPECT_EQ(read(-1, defaultValue), defaultValue);
        EXPECT_EQ(read(0.5, defaultValue), defaultValue);
        EXPECT_EQ(read(std::numeric_limits<double>::quiet_NaN(), defaultValue), defaultValue);
        EXPECT_EQ(read(std::numeric_limits<double>::infinity(), defaultValue), defaultValue);
        EXPECT_EQ(read(std::numeric_limits<std::int64_t>::min(), defaultValue), defaultValue);
    }
}

TEST(Preference, ReadsABooleanAsZeroOrOne) {
    EXPECT_EQ(read(true, std::int64_t{7}), 1);
    EXPECT_EQ(read(false, std::int64_t{7}), 0);
    EXPECT_EQ(read(true, 7.0), 1.0);
    EXPECT_EQ(read(false, 7.0), 0.0);
}

TEST(Preference, NeverTakesATextOrBytesForANumber) {
    EXPECT_TRUE(read("0", true));
    EXPECT_EQ(read("1", std::int64_t{7}), 7);
    EXPECT_TRUE(read(Data{std::byte{0}}, true));
    EXPECT_EQ(read(true, std::string{"default"}), "default");
}

TEST(Preference, ReadsANumberOfTheOtherKindWhenNothingIsLost) {
    EXPECT_EQ(read(3, 7.0), 3.0);
    EXPECT_EQ(read(3.0, std::int64_t{7}), 3);
    EXPECT_EQ(read(-0x1p63, std::int64_t{7}), std::numeric_limits<std::int64_t>::min());
}

TEST(Preference, IsItsDefaultWhenANumberOfTheOtherKindDoesNotFit) {
    EXPECT_EQ(read(3.5, std::int64_t{7}), 7);
    EXPECT_EQ(read(0x1p63, std::int64_t{7}), 7);
    EXPECT_EQ(read(std::numeric_limits<double>::quiet_NaN(), std::int64_t{7}), 7);
    EXPECT_EQ(read(-std::numeric_limits<double>::infinity(), std::int64_t{7}), 7);
    EXPECT_EQ(read(std::int64_t{9007199254740993}, 7.0), 7.0);
    EXPECT_EQ(read(std::numeric_limits<std::int64_t>::max(), 7.0), 7.0);
}

TEST(OptionalPreference, IsAbsentWithoutTheKey) {
    const InMemoryPreferenceStore store;
    EXPECT_EQ((store[Preference<std::optional<std::string>>{"key", std::nullopt}]), std::nullopt);
    EXPECT_EQ((store[Preference<std::optional<std::string>>{"key", "default"}]), "default");
}

TEST(OptionalPreference, IsItsDefaultNotEmptyWhenTheStoredKindIsAnother) {
    EXPECT_EQ(read(12, std::optional<std::string>{}), std::nullopt);
    EXPECT_EQ(read(12, std::optional<std::string>{"default"}), "default");
}

TEST(OptionalPreference, ReadsTheWrappedValue) {
    EXPECT_EQ(read("text", std::optional<std::string>{"default"}), "text");
    EXPECT_EQ(written(std::optional<std::string>{"text"}), PropertyListValue{"text"});
}

TEST(OptionalPreference, WritingNothingRemovesTheKey) {
    InMemoryPreferenceStore store{{{"key", "text"}, {"other", 1}}};
    store[Preference<std::optional<std::string>>{"key", "default"}] = std::nullopt;
    EXPECT_EQ(store.values, (Dictionary{{"other", 1}}));
}

TEST(DictionaryPreference, DropsTheEntriesThatCannotBeRead) {
    using Numbers = std::map<std::string, std::int64_t>;
    EXPECT_EQ(read(Dictionary{{"bad", "1"}, {"good", 2}}, Numbers{{"default", 0}}), (Numbers{{"good", 2}}));
}

TEST(DictionaryPreference, IsEmptyNotItsDefaultWhenNoEntryCanBeRead) {
    using Numbers = std::map<std::string, std::int64_t>;
    EXPECT_EQ(read(Dictionary{{"bad", "1"}, {"worse", Dictionary{}}}, Numbers{{"default", 0}}), Numbers{});
    EXPECT_EQ(read(Dictionary{}, Numbers{{"default", 0}}), Numbers{});
}

TEST(DictionaryPreference, IsItsDefaultWhenTheStoredValueIsNoDictionary) {
    using Numbers = std::map<std::string, std::int64_t>;
    EXPECT_EQ(read("text", Numbers{{"default", 0}}), (Numbers{{"default", 0}}));
    EXPECT_EQ(read(5, Numbers{{"default", 0}}), (Numbers{{"default", 0}}));
}

TEST(DictionaryPreference, LeavesOutEntriesThatStoreNothing) {
    using Texts = std::map<std::string, std::optional<std::string>>;
    EXPECT_EQ(written(Texts{{"empty", std::nullopt}, {"full", "text"}}),
              (PropertyListValue{Dictionary{{"full", "text"}}}));
}

TEST(DictionaryPreference, NestsAndHoldsAnyStorableType) {
    using Shortcuts = std::map<std::string, std::map<std::string, Shortcut>>;
    const Shortcuts shortcuts{{"menu", {{"left", Shortcut{.keyCode = 123, .modifiers = 6144}}}}, {"none", {}}};
    EXPECT_EQ(read(*written(shortcuts), Shortcuts{}), shortcuts);
}

TEST(RawRepresentablePreference, IsStoredAsItsRawValue) {
    InMemoryPreferenceStore store;
    const Preference<Side> side{"side", Side::near};
    store[side] = Side::far;
    EXPECT_EQ(store.object("side"), PropertyListValue{20});
    EXPECT_TRUE(store[side].value() == Side::far);
}

TEST(RawRepresentablePreference, IsItsDefaultWhenTheRawValueNamesNoCase) {
    EXPECT_TRUE(read<Side>(15, Side::far) == Side::far);
    EXPECT_TRUE(read<Side>("near", Side::far) == Side::far);
}

TEST(ShortcutPreference, IsStoredInItsOwnForm) {
    const Shortcut shortcut{.keyCode = 123, .modifiers = 6144};
    EXPECT_EQ(written(shortcut), shortcut.propertyListValue());
    EXPECT_EQ(read(shortcut.propertyListValue(), Shortcut::none), shortcut);
    EXPECT_EQ(read(Dictionary{{"keyCode", 1}}, shortcut), shortcut);
}

TEST(PreferenceStore, IdentifiesAPreferenceByItsKeyAlone) {
    InMemoryPreferenceStore store;
    store[Preference<std::string>{"key", "first default"}] = "written";
    EXPECT_EQ((store[Preference<std::string>{"key", "second default"}].value()), "written");
}

TEST(PreferenceStore, UsesTheKeyAsItIs) {
    InMemoryPreferenceStore store;
    store[Preference<bool>{"a key.with: anything", false}] = true;
    EXPECT_EQ(store.values, (Dictionary{{"a key.with: anything", true}}));
}

/// Records the writes to the store.
class RecordingStore final : public PreferenceStore {
public:
    [[nodiscard]] std::optional<PropertyListValue> object(std::string_view key) const override {
        calls.push_back("get " + std::string{key});
        return inner.object(key);
    }

    void set(std::optional<PropertyListValue> value, std::string_view key) override {
        calls.push_back((value ? "set " : "remove ") + std::string{key});
        inner.set(std::move(value), key);
    }

    InMemoryPreferenceStore inner;
    mutable std::vector<std::string> calls;
};

TEST(PreferenceStore, ModifyingIsAReadThenTheChangeThenAWrite) {
    RecordingStore store;
    const Preference<std::map<std::string, std::int64_t>> counts{"counts", {{"a", 1}}};
    store[counts].modify([&](auto& value) {
        store.calls.emplace_back("change");
        value["b"] = 2;
    });
    EXPECT_EQ(store.calls, (std::vector<std::string>{"get counts", "change", "set counts"}));
    EXPECT_EQ(store.inner.object("counts"), (PropertyListValue{Dictionary{{"a", 1}, {"b", 2}}}));
}

TEST(PreferenceStore, WritesEvenWhatItAlreadyHolds) {
    RecordingStore store;
    const Preference<bool> enabled{"enabled", true};
    store[enabled] = true;
    store[enabled] = true;
    EXPECT_EQ(store.calls, (std::vector<std::string>{"set enabled", "set enabled"}));
}

TEST(PreferenceStore, AssigningOneSettingToAnotherCopiesItsValue) {
    InMemoryPreferenceStore store{{{"a", "text"}}};
    const Preference<std::string> a{"a", ""};
    const Preference<std::string> b{"b", ""};
    store[b] = store[a];
    EXPECT_EQ(store.object("b"), PropertyListValue{"text"});
}

TEST(InMemoryPreferenceStore, HoldsWhatItIsGivenUnchecked) {
    InMemoryPreferenceStore store{{{"a", 1}}};
    EXPECT_EQ(store.object("a"), PropertyListValue{1});
    EXPECT_EQ(store.object("b"), std::nullopt);
    store.set(PropertyListValue{"now a text"}, "a");
    EXPECT_EQ(store.object("a"), PropertyListValue{"now a text"});
    store.set(std::nullopt, "b");
    store.set(std::nullopt, "a");
    EXPECT_TRUE(store.values.empty());
}

} // namespace
