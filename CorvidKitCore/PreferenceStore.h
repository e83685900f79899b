#pragma once

#include "CorvidKitCore/Preference.h"
#include "CorvidKitCore/PropertyListValue.h"

#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace corvid {

template <PreferenceValue Value>
class PreferenceReference;

/// A key-value store of property-list values. It has identity: it is referred to, never copied. Neither operation
/// fails from the caller's point of view. Used from one thread at a time unless a store says more.
class PreferenceStore {
public:
    PreferenceStore() = default;
    PreferenceStore(const PreferenceStore&) = delete;
    PreferenceStore& operator=(const PreferenceStore&) = delete;
    virtual ~PreferenceStore() = default;

    /// The value of a key; empty without one.
    [[nodiscard]] virtual std::optional<PropertyListValue> object(std::string_view key) const = 0;

    /// Keeps a value under a key. Setting nothing removes the key.
    virtual void set(std::optional<PropertyListValue> value, std::string_view key) = 0;

    /// Keeps `to` under a key, which was made out of `from`. A store that others write to as well takes over only the
    /// difference: of dictionaries, the entries that were added, changed and removed. Any other keeps `to` as it is.
    virtual void change(const PropertyListValue& /*from*/, PropertyListValue to, std::string_view key) {
        set(std::move(to), key);
    }

    /// Makes several changes, which a store that takes its time for each may keep all at once in the end.
    virtual void together(const std::function<void()>& changes) { changes(); }

    /// A setting's value: the stored one, or its default if there is none or it cannot be read.
    template <PreferenceValue Value>
    [[nodiscard]] Value operator[](const Preference<Value>& preference) const {
        if (const std::optional<PropertyListValue> stored = object(preference.key)) {
            if (std::optional<Value> value = PreferenceConversion<Value>::fromPropertyListValue(*stored)) {
                return *std::move(value);
            }
        }
        return preference.defaultValue;
    }

    /// A setting to read, write or change in place. To be used within the statement: it refers to store and setting.
    template <PreferenceValue Value>
    [[nodiscard]] PreferenceReference<Value> operator[](const Preference<Value>& preference) {
        return PreferenceReference<Value>{*this, preference};
    }
};

/// A setting in a store. Every read and every write goes to the store: nothing is cached here, and a write does not
/// compare with the former value.
template <PreferenceValue Value>
class PreferenceReference {
public:
    PreferenceReference(PreferenceStore& store, const Preference<Value>& preference)
        : store{store}
        , preference{preference} {}

    PreferenceReference(const PreferenceReference&) = delete;
    ~PreferenceReference() = default;

    [[nodiscard]] Value value() const { return std::as_const(store)[preference]; }

    operator Value() const { return value(); }

    PreferenceReference& operator=(const Value& newValue) {
        store.set(PreferenceConversion<Value>::propertyListValue(newValue), preference.key);
        return *this;
    }

    /// Takes the other setting's value, as with any two variables.
    PreferenceReference& operator=(const PreferenceReference& other) {
        if (this != &other) {
            *this = other.value();
        }
        return *this;
    }

    /// Stores the changes between a value and an earlier one that it was made from, and leaves everything else alone.
    void change(const Value& from, const Value& to) {
        const auto former = PreferenceConversion<Value>::propertyListValue(from);
        auto latter = PreferenceConversion<Value>::propertyListValue(to);
        if (former && latter) {
            store.change(*former, *std::move(latter), preference.key);
        } else {
            store.set(std::move(latter), preference.key);
        }
    }

    /// A read, the change applied to its result, and a write.
    template <std::invocable<Value&> Change>
    void modify(Change&& change) {
        Value changed = value();
        std::invoke(std::forward<Change>(change), changed);
        *this = changed;
    }

private:
    PreferenceStore& store;
    const Preference<Value>& preference;
};

} // namespace corvid
