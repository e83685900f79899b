#include "Platform/Linux/Text/Languages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

namespace platform::linux {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Languages, AreThoseOfTheListThenTheLocales) {
    EXPECT_THAT(userLanguages({.language = "fr:de_AT:en", .lang = "pt_BR.UTF-8"}),
                ElementsAre("fr", "de_AT", "en", "pt_BR.UTF-8"));
    EXPECT_THAT(userLanguages({.lang = "pt_BR.UTF-8"}), ElementsAre("pt_BR.UTF-8"));
}

TEST(Languages, HaveOneLocaleTheMostParticularThatIsSet) {
    EXPECT_THAT(userLanguages({.all = "de_DE.UTF-8", .messages = "fr_FR", .lang = "en_US"}),
                ElementsAre("de_DE.UTF-8"));
    EXPECT_THAT(userLanguages({.messages = "fr_FR", .lang = "en_US"}), ElementsAre("fr_FR"));
    EXPECT_THAT(userLanguages({.all = "", .messages = "", .lang = "en_US"}), ElementsAre("en_US"));
}

TEST(Languages, CountAlsoWhereTheLocaleIsPlain) {
    EXPECT_THAT(userLanguages({.language = "ko:ja", .lang = "C"}), ElementsAre("ko", "ja", "C"));
    EXPECT_THAT(userLanguages({.language = "ko"}), ElementsAre("ko"));
}

TEST(Languages, AreNoneInAnEmptyEnvironment) {
    EXPECT_THAT(userLanguages(LanguageVariables{}), IsEmpty());
    EXPECT_THAT(userLanguages({.language = "::", .all = "", .messages = "", .lang = ""}), IsEmpty());
}

/// Replaces this process's environment variables for a test.
class WithVariables {
public:
    explicit WithVariables(const std::map<std::string, std::string>& variables) {
        for (const auto& [name, value] : variables) {
            const char* old = std::getenv(name.c_str());
            before[name] = old != nullptr ? std::optional<std::string>(old) : std::nullopt;
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
    WithVariables(const WithVariables&) = delete;
    WithVariables& operator=(const WithVariables&) = delete;
    ~WithVariables() {
        for (const auto& [name, value] : before) {
            value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
        }
    }

private:
    std::map<std::string, std::optional<std::string>> before;
};

TEST(Languages, ComeFromTheEnvironment) {
    const WithVariables variables({{"LANGUAGE", "it:es"}, {"LC_ALL", ""}, {"LC_MESSAGES", "de_DE"}, {"LANG", "en"}});
    EXPECT_THAT(userLanguages(), ElementsAre("it", "es", "de_DE"));
}

} // namespace
} // namespace platform::linux
