#include "Platform/Linux/Text/Localization.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using Languages = std::vector<std::string>;

constexpr const char* activeKey = "Active · %lld shortcuts · %lld apps";

/// The catalogues of this build, in the given languages.
Localization localization(const Languages& languages) {
    return {"tessel", TESSEL_TEST_LOCALE_TREE, languages};
}

/// Reads the catalogues with this locale and this `LANGUAGE` set.
class LocalizationIn : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        // The C library reads this variable first.
        setenv("LOCPATH", TESSEL_TEST_LOCALES, 1);
        ASSERT_NE(std::setlocale(LC_ALL, GetParam()), nullptr);
        unsetenv("LOCPATH");
        setenv("LANGUAGE", "ko", 1);
    }
    void TearDown() override {
        std::setlocale(LC_ALL, "C");
        unsetenv("LANGUAGE");
    }
};

INSTANTIATE_TEST_SUITE_P(Locales, LocalizationIn, testing::Values("C", "POSIX", "C.UTF-8", "de_DE.UTF-8"));

TEST_P(LocalizationIn, GivesTheTextsOfTheLanguagesItWasGiven) {
    const Localization german = localization({"de", "fr"});
    EXPECT_EQ(german.text("Tessel", "Paused"), "Pausiert");
    EXPECT_EQ(german.text("CorvidKit", "Quit"), "Beenden");
    EXPECT_EQ(german.text("Tessel", activeKey), "Aktiv · %1 · %2");
    EXPECT_EQ(localization({"zh_CN"}).text("Tessel", "Paused"), "已暂停");
    EXPECT_EQ(localization({}).text("Tessel", "Paused"), "Paused");
}

TEST_P(LocalizationIn, LeavesTheLanguageOfEverythingElseAsItWas) {
    const Localization german = localization({"de"});
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    EXPECT_EQ(german.text("Tessel", "%n apps", 1), "1 App");
    EXPECT_STREQ(std::getenv("LANGUAGE"), "ko");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    EXPECT_EQ(uselocale(nullptr), LC_GLOBAL_LOCALE);

    unsetenv("LANGUAGE");
    EXPECT_EQ(german.text("Tessel", "Paused"), "Pausiert");
    EXPECT_EQ(std::getenv("LANGUAGE"), nullptr);
}

TEST(Localization, CountsAsTheLanguageDoes) {
    struct Row {
        const char* language;
        std::vector<std::string> apps; ///< None, one and two of them.
    };
    const std::vector<Row> rows{
        {.language = "en", .apps = {"0 apps", "1 app", "2 apps"}},
        {.language = "de", .apps = {"0 Apps", "1 App", "2 Apps"}},
        {.language = "es", .apps = {"0 aplicaciones", "1 aplicación", "2 aplicaciones"}},
        {.language = "it", .apps = {"0 applicazioni", "1 applicazione", "2 applicazioni"}},
        {.language = "ja", .apps = {"アプリ 0 個", "アプリ 1 個", "アプリ 2 個"}},
        {.language = "zh_CN", .apps = {"0 个应用", "1 个应用", "2 个应用"}},
        {.language = "fr", .apps = {"0 application", "1 application", "2 applications"}},
        {.language = "pt_BR", .apps = {"0 aplicativo", "1 aplicativo", "2 aplicativos"}},
        {.language = "ko", .apps = {"앱 0개", "앱 1개", "앱 2개"}},
    };
    for (const auto& [language, apps] : rows) {
        const Localization texts = localization({language});
        for (std::size_t count = 0; count < apps.size(); ++count) {
            EXPECT_EQ(texts.text("Tessel", "%n apps", count), apps[count]) << language;
        }
    }
    EXPECT_EQ(localization({"de"}).text("Tessel", "%n shortcuts", 4'000'000'000), "4000000000 Tastenkürzel");
}

TEST(Localization, IsEnglishWhereNoLanguageHasTheText) {
    for (const Languages& languages : {Languages{}, Languages{"en"}, Languages{"tlh", "pl"}}) {
        const Localization english = localization(languages);
        EXPECT_EQ(english.text("Tessel", activeKey), "Active · %1 · %2");
        EXPECT_EQ(english.text("Tessel", "%n apps", 1), "1 app");
        EXPECT_EQ(english.text("Tessel", "Not a text of ours"), "Not a text of ours");
        EXPECT_EQ(english.text("Tessel", "%n of nothing", 7), "7 of nothing");
    }
}

TEST(Localization, KeepsTheTablesApart) {
    const Localization german = localization({"de"});
    EXPECT_EQ(german.text("Tessel", "Quit"), "Quit");
    EXPECT_EQ(german.text("CorvidKit", "Paused"), "Paused");
}

TEST(Localization, HasTheTextsOfAllDesktopsNotThoseOfOne) {
    // The catalogue has two translations of this text, one with a comment.
    EXPECT_EQ(localization({"en"}).text("Tessel", "Allow Accessibility access"), "Allow Accessibility access");
    EXPECT_EQ(localization({"de"}).text("Tessel", "Allow Accessibility access"),
              "Zugriff auf Bedienungshilfen erlauben");
}

TEST(Localization, GivesTheKeysWhereThereAreNoCatalogues) {
    const Localization texts("tessel", "/nonexistent", Languages{"de"});
    EXPECT_EQ(texts.text("Tessel", "Paused"), "Paused");
    EXPECT_EQ(texts.text("Tessel", "%n apps", 3), "3 apps");
}

} // namespace
} // namespace platform::linux
