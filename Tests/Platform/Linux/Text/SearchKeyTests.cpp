#include "Platform/Linux/Text/SearchKey.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

TEST(SearchKey, LeavesOutCaseAndAccents) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", ""},
        {"Text Editor 2", "text editor 2"},
        {"Éditeur", "editeur"},
        {"E\u0301diteur", "editeur"}, // the same, taken apart
        {"ÅNGSTRÖM", "angstrom"},
        {"Straße", "strasse"},
        {"STRASSE", "strasse"},
        {"Łódź", "lodz"},
        {"Øl & Æbler", "ol & aebler"},
        {"Đorđe", "dorde"},
        {"İstanbul ılık", "istanbul ilik"},
        {"Ελληνικά", "ελληνικα"},
        {"ΛΌΓΟΣ", "λογοσ"},
        {"λόγος", "λογοσ"}, // the final form of the letter, too
        {"Ёлка", "елка"},
        {"ﬁle", "file"},      // a ligature
        {"Ｔｅｘｔ", "text"}, // full width
        {"סֵפֶר", "ספר"},       // Hebrew points
        {"مُحَرِّر", "محرر"},     // Arabic points
        {"हिन्दी", "हिन्दी"},   // vowel signs are as good as letters
        {"แก้ไข", "แก้ไข"},
        {"中文", "中文"},
        {"一\xFF", "一\uFFFD"}, // not UTF-8
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(searchKey(text), expected) << text;
    }
    EXPECT_EQ(searchKey(std::string_view("a\0b", 3)).substr(0, 1), "a");
}

} // namespace
} // namespace platform::linux
