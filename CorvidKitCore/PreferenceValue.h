#pragma once

#include "CorvidKitCore/PropertyListValue.h"

#include <cmath>
#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace corvid {

/// How values of a type are kept in a store. A specialisation has two functions:
/// - `std::optional<PropertyListValue> propertyListValue(const Value&)`: the form to store, nothing to store nothing;
/// - `std::optional<Value> fromPropertyListValue(const PropertyListValue&)`: the value, nothing when it cannot be read.
/// Types of one's own need none when they have members of these names, or a raw value.
template <typename Value>
struct PreferenceConversion;

/// A type whose values a store can keep.
template <typename Value>
concept PreferenceValue = requires(const Value& value, const PropertyListValue& stored) {
    { PreferenceConversion<Value>::propertyListValue(value) } -> std::same_as<std::optional<PropertyListValue>>;
    { PreferenceConversion<Value>::fromPropertyListValue(stored) } -> std::same_as<std::optional<Value>>;
};

/// A type that is held as it is.
template <typename Value>
concept PropertyListPrimitive =
    std::same_as<Value, bool> || std::same_as<Value, std::int64_t> || std::same_as<Value, double> ||
    std::same_as<Value, std::string> || std::same_as<Value, Data>;

/// A type that is another value in disguise, as an enumeration with raw values is.
template <typename Value>
concept RawRepresentable = requires(const Value& value, const typename Value::RawValue& raw) {
    requires PreferenceValue<typename Value::RawValue>;
    requires std::constructible_from<typename Value::RawValue, decltype(value.rawValue())>;
    { Value::fromRawValue(raw) } -> std::same_as<std::optional<Value>>;
};

/// A type that knows its stored form.
template <typename Value>
concept PropertyListConvertible = requires(const Value& value, const PropertyListValue& stored) {
    { value.propertyListValue() } -> std::convertible_to<std::optional<PropertyListValue>>;
    { Value::fromPropertyListValue(stored) } -> std::same_as<std::optional<Value>>;
};

/// Numbers and booleans are read across their kinds when nothing is lost, as the settings database of the platform
/// does: an integer 3 as the float 3 and the other way round, a 0 or 1 of either kind as a boolean, a boolean as 0
/// or 1.
template <PropertyListPrimitive Value>
struct PreferenceConversion<Value> {
    static std::optional<PropertyListValue> propertyListValue(const Value& value) { return PropertyListValue{value}; }

    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        return stored.visit([]<typename Stored>(const Stored& value) -> std::optional<Value> {
            if constexpr (std::same_as<Stored, Value>) {
                return value;
            } else if constexpr (isNumber<Stored> && isNumber<Value>) {
                return exact(value);
            } else {
                return std::nullopt;
            }
        });
    }

private:
    template <typename Type>
    static constexpr bool isNumber =
        std::same_as<Type, bool> || std::same_as<Type, std::int64_t> || std::same_as<Type, double>;

    /// The number in the other kind; empty if that kind has no such number.
    template <typename Stored>
    static std::optional<Value> exact(Stored number) {
        if constexpr (std::same_as<Stored, double> && std::same_as<Value, std::int64_t>) {
            return exactInteger(number);
        } else {
            const auto converted = static_cast<Value>(number);
            if constexpr (std::same_as<Stored, std::int64_t> && std::same_as<Value, double>) {
                return exactInteger(converted) == number ? std::optional{converted} : std::nullopt;
            } else {
                return static_cast<Stored>(converted) == number ? std::optional{converted} : std::nullopt;
            }
        }
    }

    static std::optional<std::int64_t> exactInteger(double real) {
        constexpr double limit = 0x1p63;
        if (real >= -limit && real < limit && std::trunc(real) == real) {
            return static_cast<std::int64_t>(real);
        }
        return std::nullopt;
    }
};

template <RawRepresentable Value>
struct PreferenceConversion<Value> {
    using RawConversion = PreferenceConversion<typename Value::RawValue>;

    static std::optional<PropertyListValue> propertyListValue(const Value& value) {
        return RawConversion::propertyListValue(typename Value::RawValue{value.rawValue()});
    }

    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        const auto raw = RawConversion::fromPropertyListValue(stored);
        return raw ? Value::fromRawValue(*raw) : std::nullopt;
    }
};

template <PropertyListConvertible Value>
struct PreferenceConversion<Value> {
    static std::optional<PropertyListValue> propertyListValue(const Value& value) { return value.propertyListValue(); }

    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        return Value::fromPropertyListValue(stored);
    }
};

/// An empty optional stores nothing. A stored value that does not read as the wrapped type fails the whole reading: it
/// does not read as an empty optional.
template <PreferenceValue Wrapped>
struct PreferenceConversion<std::optional<Wrapped>> {
    static std::optional<PropertyListValue> propertyListValue(const std::optional<Wrapped>& value) {
        return value ? PreferenceConversion<Wrapped>::propertyListValue(*value) : std::nullopt;
    }

    static std::optional<std::optional<Wrapped>> fromPropertyListValue(const PropertyListValue& stored) {
        std::optional<Wrapped> value = PreferenceConversion<Wrapped>::fromPropertyListValue(stored);
        if (!value) {
            return std::nullopt;
        }
        return std::optional<std::optional<Wrapped>>{std::move(value)};
    }
};

/// Entries that cannot be read are dropped one by one, so one of them never costs the others; entries that store
/// nothing are left out.
template <PreferenceValue Entry, typename Compare>
struct PreferenceConversion<std::map<std::string, Entry, Compare>> {
    using Entries = std::map<std::string, Entry, Compare>;

    static std::optional<PropertyListValue> propertyListValue(const Entries& value) {
        PropertyListValue::Dictionary stored;
        for (const auto& [key, entry] : value) {
            if (std::optional<PropertyListValue> form = PreferenceConversion<Entry>::propertyListValue(entry)) {
                stored.emplace(key, *std::move(form));
            }
        }
        return PropertyListValue{std::move(stored)};
    }

    static std::optional<Entries> fromPropertyListValue(const PropertyListValue& stored) {
        const PropertyListValue::Dictionary* dictionary = stored.dictionary();
        if (dictionary == nullptr) {
            return std::nullopt;
        }
        Entries value;
        for (const auto& [key, form] : *dictionary) {
            if (std::optional<Entry> entry = PreferenceConversion<Entry>::fromPropertyListValue(form)) {
                value.emplace(key, *std::move(entry));
            }
        }
        return value;
    }
};

} // namespace corvid
