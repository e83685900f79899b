#include "CorvidKit/LocalizedComparison.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using Names = std::vector<std::string>;

/// Sets a locale for the duration of a test.
class InLocale {
public:
    explicit InLocale(const char* name)
        : before(std::setlocale(LC_ALL, nullptr))
        , isThere(std::setlocale(LC_ALL, name) != nullptr) {}
    InLocale(const InLocale&) = delete;
    InLocale& operator=(const InLocale&) = delete;
    ~InLocale() { std::setlocale(LC_ALL, before.c_str()); }

private:
    std::string before;

public:
    const bool isThere;
};

Names sorted(Names names) {
    sortByName(names, std::identity());
    return names;
}

TEST(LocalizedComparison, PutsLetterCaseAside) {
    const InLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.isThere);
    EXPECT_EQ(sorted({"zebra", "Editor", "apple", "Zoom"}), (Names{"apple", "Editor", "zebra", "Zoom"}));
    EXPECT_FALSE(goesBefore("ÉCRAN", "écran"));
    EXPECT_FALSE(goesBefore("écran", "ÉCRAN"));
    EXPECT_TRUE(goesBefore("ЖУК", "жуки"));
}

TEST(LocalizedComparison, KeepsTheOrderOfNamesThatCompareEqual) {
    const InLocale locale("C.UTF-8");
    EXPECT_EQ(sorted({"Editor", "EDITOR", "editor"}), (Names{"Editor", "EDITOR", "editor"}));
}

TEST(LocalizedComparison, PutsTheEmptyNameFirst) {
    const InLocale locale("C.UTF-8");
    EXPECT_EQ(sorted({"a", "", " "}), (Names{"", " ", "a"}));
}

TEST(LocalizedComparison, IsOneOrderAlsoOfNamesInAnotherEncoding) {
    const InLocale locale("C.UTF-8");
    EXPECT_EQ(sorted({"\xff", "b", "\xe9t", "A"}), (Names{"A", "b", "\xe9t", "\xff"}));
}

TEST(LocalizedComparison, FollowsTheUsersLanguage) {
    // The C library reads this variable first.
    ASSERT_EQ(setenv("LOCPATH", TESSEL_TEST_LOCALES, 1), 0);
    const InLocale locale("de_DE.UTF-8");
    unsetenv("LOCPATH");
    ASSERT_TRUE(locale.isThere);
    EXPECT_EQ(sorted({"Zebra", "ärger", "Apfel", "Ball"}), (Names{"Apfel", "ärger", "Ball", "Zebra"}));
}

} // namespace
} // namespace corvid
