#include "TesselCore/AppName.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using tessel::AppName::display;

TEST(AppName, IsTheFileNameWithoutItsSuffix) {
    EXPECT_EQ(display("Notes.app", "com.example.notes"), "Notes");
    EXPECT_EQ(display("Two.app.app", "com.example.two"), "Two.app");
}

TEST(AppName, KeepsASuffixOfAnotherLetterCase) {
    EXPECT_EQ(display("Notes.APP", "com.example.notes"), "Notes.APP");
}

TEST(AppName, KeepsAFileNameWithoutTheSuffix) {
    EXPECT_EQ(display("notes", "com.example.notes"), "notes");
    EXPECT_EQ(display("app", "com.example.notes"), "app");
    EXPECT_EQ(display("Notes.app.bak", "com.example.notes"), "Notes.app.bak");
}

TEST(AppName, IsTheBundleIdentifierWithoutAFileName) {
    EXPECT_EQ(display(std::nullopt, "com.example.notes"), "com.example.notes");
    EXPECT_EQ(display("", "com.example.notes"), "com.example.notes");
}

TEST(AppName, IsEmptyForAFileNameThatIsOnlyTheSuffix) {
    EXPECT_EQ(display(".app", "com.example.notes"), "");
}

} // namespace
