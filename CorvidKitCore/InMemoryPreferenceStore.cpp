#include "CorvidKitCore/InMemoryPreferenceStore.h"

#include <string>
#include <utility>

namespace corvid {

InMemoryPreferenceStore::InMemoryPreferenceStore(PropertyListValue::Dictionary values)
    : values{std::move(values)} {
}

std::optional<PropertyListValue> InMemoryPreferenceStore::object(std::string_view key) const {
    const auto entry = values.find(key);
    return entry != values.end() ? std::optional{entry->second} : std::nullopt;
}

void InMemoryPreferenceStore::set(std::optional<PropertyListValue> value, std::string_view key) {
    if (value) {
        values.insert_or_assign(std::string{key}, *std::move(value));
    } else if (const auto entry = values.find(key); entry != values.end()) {
        values.erase(entry);
    }
}

} // namespace corvid
