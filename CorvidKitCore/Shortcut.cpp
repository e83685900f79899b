#include "CorvidKitCore/Shortcut.h"

#include "CorvidKitCore/Keys.h"

#include <string_view>
#include <utility>

namespace corvid {
namespace {

std::optional<std::uint32_t> unsigned32(const PropertyListValue::Dictionary& entries, std::string_view key) {
    const auto entry = entries.find(key);
    if (entry == entries.end()) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> number = entry->second.integer();
    if (!number || !std::in_range<std::uint32_t>(*number)) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*number);
}

} // namespace

std::vector<std::string> Shortcut::symbols() const {
    std::vector<std::string> caps;
    for (const Modifier& each : modifiersIn(modifiers)) {
        caps.emplace_back(each.cap);
    }
    caps.push_back(keyName(keyCode));
    return caps;
}

std::string Shortcut::displayString() const {
    std::string text;
    for (const std::string& cap : symbols()) {
        text += cap;
    }
    return text;
}

std::string Shortcut::keyName(std::uint32_t keyCode) {
    const Key* key = keyOf(keyCode);
    return key != nullptr ? std::string(key->cap) : "#" + std::to_string(keyCode);
}

PropertyListValue Shortcut::propertyListValue() const {
    return PropertyListValue::Dictionary{{std::string{keyCodeKey}, keyCode}, {std::string{modifiersKey}, modifiers}};
}

std::optional<Shortcut> Shortcut::fromPropertyListValue(const PropertyListValue& stored) {
    const PropertyListValue::Dictionary* entries = stored.dictionary();
    if (entries == nullptr) {
        return std::nullopt;
    }
    const std::optional<std::uint32_t> key = unsigned32(*entries, keyCodeKey);
    const std::optional<std::uint32_t> mask = unsigned32(*entries, modifiersKey);
    if (!key || !mask) {
        return std::nullopt;
    }
    return Shortcut{.keyCode = *key, .modifiers = *mask};
}

} // namespace corvid
