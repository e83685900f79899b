#include "Platform/X11/ApplicationClues.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace std::string_view_literals;

namespace platform::x11 {

// Prints a class in a failed test.
static void PrintTo(const WindowClass& value, std::ostream* stream) {
    *stream << '"' << value.instance << "\" \"" << value.className << '"';
}

namespace {

TEST(WindowClass, BothHalvesAreTakenApart) {
    struct Case {
        std::string_view bytes;
        WindowClass parsed;
    };

    const std::vector<Case> cases{
        {"mousepad\0Mousepad\0"sv, {"mousepad", "Mousepad"}},
        {"mousepad\0Mousepad"sv, {"mousepad", "Mousepad"}},
        {"mousepad"sv, {"mousepad", ""}},
        {"mousepad\0"sv, {"mousepad", ""}},
        {"\0Mousepad\0"sv, {"", "Mousepad"}},
        {"a\0b\0c\0"sv, {"a", "b"}},
        {"a\0\0c\0"sv, {"a", ""}},
        {"\0\0"sv, {"", ""}},
        {"\0"sv, {"", ""}},
        {""sv, {"", ""}},
        {"two words\0Two Words\0"sv, {"two words", "Two Words"}},
        {"\xff\xfe\0\x80\0"sv, {"\xff\xfe", "\x80"}},
    };
    for (const Case& entry : cases) {
        EXPECT_EQ(parseWindowClass(entry.bytes), entry.parsed);
    }
}

RC_GTEST_PROP(WindowClass, WhateverTheBytesNoHalfHoldsAZeroAndBothComeFromThem, (const std::string& bytes)) {
    const WindowClass parsed = parseWindowClass(bytes);
    RC_ASSERT(parsed.instance.find('\0') == std::string::npos);
    RC_ASSERT(parsed.className.find('\0') == std::string::npos);
    RC_ASSERT(bytes.starts_with(parsed.instance));
    RC_ASSERT(parsed.instance.size() + parsed.className.size() <= bytes.size());
}

TEST(NamedApplicationId, AnIdIsTakenFromWhicheverNamesOne) {
    struct Case {
        std::string_view gtkApplicationId;
        std::string_view kdeDesktopFile;
        std::string_view id;
    };

    const std::vector<Case> cases{
        {"org.xfce.mousepad", "", "org.xfce.mousepad"},
        {"org.xfce.mousepad", "org.kde.kate", "org.xfce.mousepad"},
        {"", "org.kde.kate", "org.kde.kate"},
        {"", "org.kde.kate.desktop", "org.kde.kate"},
        {"", "/usr/share/applications/org.kde.kate.desktop", "org.kde.kate"},
        {"", "/usr/share/applications/org.kde.kate", "org.kde.kate"},
        {"", "file:///usr/share/applications/org.kde.kate.desktop", "org.kde.kate"},
        {"", ".desktop", ""},
        {"", "/", ""},
        {"", "/usr/share/applications/", ""},
        {"first\0second"sv, "", "first"},
        {"\0second"sv, "kate\0more"sv, "kate"},
        {"", "", ""},
    };
    for (const Case& entry : cases) {
        EXPECT_EQ(namedApplicationId(entry.gtkApplicationId, entry.kdeDesktopFile), entry.id)
            << entry.gtkApplicationId << ' ' << entry.kdeDesktopFile;
    }
}

RC_GTEST_PROP(NamedApplicationId, WhateverIsGivenItHoldsNoZeroAndIsNoLonger,
              (const std::string& gtk, const std::string& kde)) {
    const std::string id = namedApplicationId(gtk, kde);
    RC_ASSERT(id.find('\0') == std::string::npos);
    RC_ASSERT(id.size() <= std::max(gtk.size(), kde.size()));
}

} // namespace
} // namespace platform::x11
