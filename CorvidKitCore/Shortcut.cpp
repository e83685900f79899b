#include "CorvidKitCore/Shortcut.h"

#include <array>
#include <string_view>
#include <utility>

namespace corvid {
namespace {

using KeyName = std::pair<std::uint8_t, std::string_view>;

constexpr std::array<KeyName, 68> keyNames{{
    {0, "A"},   {11, "B"},  {8, "C"},   {2, "D"},    {14, "E"},     {3, "F"},     {5, "G"},     {4, "H"},
    {34, "I"},  {38, "J"},  {40, "K"},  {37, "L"},   {46, "M"},     {45, "N"},    {31, "O"},    {35, "P"},
    {12, "Q"},  {15, "R"},  {1, "S"},   {17, "T"},   {32, "U"},     {9, "V"},     {13, "W"},    {7, "X"},
    {16, "Y"},  {6, "Z"},   {29, "0"},  {18, "1"},   {19, "2"},     {20, "3"},    {21, "4"},    {23, "5"},
    {22, "6"},  {26, "7"},  {28, "8"},  {25, "9"},   {122, "F1"},   {120, "F2"},  {99, "F3"},   {118, "F4"},
    {96, "F5"}, {97, "F6"}, {98, "F7"}, {100, "F8"}, {101, "F9"},   {109, "F10"}, {103, "F11"}, {111, "F12"},
    {123, "←"}, {124, "→"}, {125, "↓"}, {126, "↑"},  {49, "Space"}, {36, "↩"},    {48, "⇥"},    {51, "⌫"},
    {53, "⎋"},  {27, "-"},  {24, "="},  {33, "["},   {30, "]"},     {41, ";"},    {39, "'"},    {43, ","},
    {47, "."},  {44, "/"},  {42, "\\"}, {50, "`"},
}};

/// The names indexed by key code, empty where there is none. Built by the compiler, which also refuses a code that is
/// listed twice, so a look-up costs an index and the process carries no table to build.
constexpr auto names = [] {
    std::array<std::string_view, 128> table{};
    for (const auto& [code, name] : keyNames) {
        if (!table.at(code).empty()) {
            throw "a key code is listed twice";
        }
        table.at(code) = name;
    }
    return table;
}();

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
    if ((modifiers & control) != 0) {
        caps.emplace_back("⌃");
    }
    if ((modifiers & option) != 0) {
        caps.emplace_back("⌥");
    }
    if ((modifiers & shift) != 0) {
        caps.emplace_back("⇧");
    }
    if ((modifiers & command) != 0) {
        caps.emplace_back("⌘");
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
    if (keyCode < names.size() && !names[keyCode].empty()) {
        return std::string{names[keyCode]};
    }
    return "#" + std::to_string(keyCode);
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
