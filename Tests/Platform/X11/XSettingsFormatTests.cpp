#include "Platform/X11/XSettingsFormat.h"
#include "XSettingsWriter.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace platform::x11 {
namespace {

XSettings read(std::string_view bytes) {
    return readXSettings(std::as_bytes(std::span(bytes)));
}

/// The first settings of a list, up to the requested number.
XSettings firstOf(const XSettingsList& list, std::size_t count) {
    XSettings settings;
    for (std::size_t index = 0; index < count; ++index) {
        settings.insert_or_assign(list[index].first, list[index].second);
    }
    return settings;
}

TEST(XSettingsFormat, NumbersAndTextsAreReadInEitherByteOrder) {
    const XSettingsList list{{"Gtk/EnableAnimations", 0},
                             {"Net/ThemeName", "Adwaita-dark"},
                             {"Xft/DPI", 98304},
                             {"Net/CursorBlinkTime", -1},
                             {"", ""}};
    EXPECT_EQ(read(writeXSettings(list, false)), firstOf(list, list.size()));
    EXPECT_EQ(read(writeXSettings(list, true)), firstOf(list, list.size()));
}

TEST(XSettingsFormat, AMalformedSettingEndsTheReading) {
    const std::string whole = writeXSettings({{"First", 1}, {"Second", "two"}});
    const auto changed = [&](std::size_t index, char value) {
        std::string bytes = whole;
        bytes.at(index) = value;
        return bytes;
    };
    EXPECT_EQ(read(""), XSettings());
    EXPECT_EQ(read(changed(0, 2)), XSettings()) << "an unknown byte order";
    EXPECT_EQ(read(changed(8, 1)), (XSettings{{"First", 1}})) << "the number of settings";
    EXPECT_EQ(read(changed(12, 3)), XSettings()) << "an unknown kind";
    EXPECT_EQ(read(changed(15, '\x7F')), XSettings()) << "a name beyond the end";
    EXPECT_EQ(read(changed(11, '\x7F')), (XSettings{{"First", 1}, {"Second", "two"}})) << "more than there are";
}

RC_GTEST_PROP(XSettingsFormatProperties, WhatIsWrittenIsReadAndATruncationGivesTheSettingsBefore,
              (bool isMostFirst, std::size_t cut)) {
    XSettingsList list;
    for (const auto& name : *rc::gen::arbitrary<std::vector<std::string>>()) {
        if (*rc::gen::arbitrary<bool>()) {
            list.emplace_back(name, *rc::gen::arbitrary<std::int32_t>());
        } else {
            list.emplace_back(name, *rc::gen::arbitrary<std::string>());
        }
    }
    const std::string whole = writeXSettings(list, isMostFirst);
    RC_ASSERT(read(whole) == firstOf(list, list.size()));
    const XSettings settings = read(std::string_view(whole).substr(0, cut % whole.size()));
    bool isFront = false;
    for (std::size_t count = 0; count <= list.size(); ++count) {
        isFront = isFront || settings == firstOf(list, count);
    }
    RC_ASSERT(isFront);
}

RC_GTEST_PROP(XSettingsFormatProperties, NoBytesLeadToMoreThanIsInThem, (const std::string& bytes)) {
    std::size_t length = 0;
    for (const auto& [name, value] : read(bytes)) {
        length += name.size() + (std::holds_alternative<std::string>(value) ? std::get<std::string>(value).size() : 4);
    }
    RC_ASSERT(length <= bytes.size());
}

RC_GTEST_PROP(XSettingsFormatProperties, NoDamageLeadsToMoreThanIsInThem,
              (std::size_t place, std::uint8_t damage, bool isMostFirst)) {
    std::string bytes = writeXSettings({{"Net/ThemeName", "Adwaita-dark"}, {"Gtk/EnableAnimations", 0}}, isMostFirst);
    bytes[place % bytes.size()] = static_cast<char>(damage);
    std::size_t length = 0;
    for (const auto& [name, value] : read(bytes)) {
        length += name.size() + (std::holds_alternative<std::string>(value) ? std::get<std::string>(value).size() : 4);
    }
    RC_ASSERT(length <= bytes.size());
}

} // namespace
} // namespace platform::x11
