#include "CorvidKitCore/PreferredLocalizations.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using corvid::preferredLocalizations;
using Names = std::vector<std::string>;

const Names nine{"en", "de", "fr", "es", "it", "pt_BR", "ja", "ko", "zh_CN"};

struct LocalizationRow {
    Names wanted;
    Names given;
};

void expect(const std::vector<LocalizationRow>& rows, const Names& available = nine) {
    for (const auto& [wanted, given] : rows) {
        EXPECT_EQ(preferredLocalizations(available, wanted), given) << testing::PrintToString(wanted);
    }
}

TEST(PreferredLocalizations, UnderstandsEveryWayToNameALanguage) {
    expect({
        {.wanted = {"de"}, .given = {"de"}},
        {.wanted = {"de_DE.UTF-8"}, .given = {"de"}},
        {.wanted = {"de_CH@euro"}, .given = {"de"}},
        {.wanted = {"DE-at"}, .given = {"de"}},
        {.wanted = {"pt-br"}, .given = {"pt_BR"}},
        {.wanted = {"zh-Hans-CN"}, .given = {"zh_CN"}},
        {.wanted = {"ja_JP.eucJP"}, .given = {"ja"}},
    });
}

TEST(PreferredLocalizations, KeepsTheOrderOfTheUser) {
    expect({
        {.wanted = {"fr_FR", "de_DE", "en_GB"}, .given = {"fr", "de", "en"}},
        {.wanted = {"pt_BR:pt:en"}, .given = {"pt_BR", "en"}},
        {.wanted = {"it:ko", "es_MX.UTF-8"}, .given = {"it", "ko", "es"}},
        {.wanted = {"de_AT:de:en", "de_AT.UTF-8"}, .given = {"de", "en"}},
        {.wanted = {"pl:::ja:", ""}, .given = {"ja"}},
    });
}

TEST(PreferredLocalizations, IsServedByAnotherCountrysForm) {
    expect({
        {.wanted = {"pt"}, .given = {"pt_BR"}},
        {.wanted = {"pt_PT.UTF-8"}, .given = {"pt_BR"}},
        {.wanted = {"zh"}, .given = {"zh_CN"}},
        {.wanted = {"zh_SG"}, .given = {"zh_CN"}},
        {.wanted = {"zh_Hans"}, .given = {"zh_CN"}},
        {.wanted = {"zh_Hans_HK"}, .given = {"zh_CN"}},
    });
}

TEST(PreferredLocalizations, DoesNotGiveAScriptThatTheUserMayNotRead) {
    expect({
        {.wanted = {"zh_TW"}, .given = {}},
        {.wanted = {"zh_HK.UTF-8"}, .given = {}},
        {.wanted = {"zh_MO"}, .given = {}},
        {.wanted = {"zh-Hant"}, .given = {}},
        {.wanted = {"zh_Hant_CN"}, .given = {}},
        {.wanted = {"zh_TW:zh_CN"}, .given = {"zh_CN"}},
    });
    expect({{.wanted = {"sr_RS@latin"}, .given = {"sr@latin"}}, {.wanted = {"sr_RS"}, .given = {"sr"}}},
           {"sr", "sr@latin"});
}

TEST(PreferredLocalizations, PrefersTheSameCountryThenTheLanguageAsSuch) {
    expect({{.wanted = {"pt_BR"}, .given = {"pt_BR"}},
            {.wanted = {"pt_PT"}, .given = {"pt_PT"}},
            {.wanted = {"pt_AO"}, .given = {"pt"}}},
           {"pt_BR", "pt", "pt_PT"});
    expect({{.wanted = {"pt"}, .given = {"pt_PT"}}}, {"pt_PT", "pt_BR"});
}

TEST(PreferredLocalizations, GivesNothingWhereNothingIsWanted) {
    expect({
        {.wanted = {}, .given = {}},
        {.wanted = {""}, .given = {}},
        {.wanted = {"C"}, .given = {}},
        {.wanted = {"C.UTF-8"}, .given = {}},
        {.wanted = {"POSIX"}, .given = {}},
        {.wanted = {"pl_PL.UTF-8"}, .given = {}},
        {.wanted = {"_", "-", "@", ".UTF-8", "@latin"}, .given = {}},
        {.wanted = {"fr:C:de"}, .given = {"fr"}},
    });
    expect({{.wanted = {"de", "en"}, .given = {}}}, {});
}

} // namespace
