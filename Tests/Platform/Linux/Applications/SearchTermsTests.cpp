#include "Platform/Linux/Applications/SearchTerms.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

using Terms = std::multiset<std::string>;

Terms termsOf(const std::string& lines) {
    const std::vector<std::string> terms = searchTerms("[Desktop Entry]\nType=Application\n" + lines);
    return {terms.begin(), terms.end()};
}

TEST(SearchTerms, AreTheKindTheKeywordsAndTheProgram) {
    inChildProcess([] {
        ASSERT_EQ(::setenv("LC_ALL", "C", 1), 0);
        EXPECT_EQ(termsOf("Name=GNU Image Manipulation Program\nGenericName=Image Editor\n"
                          "Keywords=GIMP;graphic;design;\nExec=/usr/bin/gimp-2.10 %U\n"),
                  (Terms{"GNU Image Manipulation Program", "Image Editor", "Image Editor", "GIMP", "GIMP", "graphic",
                         "graphic", "design", "design", "gimp-2.10"}));
    });
}

TEST(SearchTerms, AreThereUntranslatedAndInTheUsersLanguage) {
    const std::string lines = "Name=Files\nName[de]=Dateien\nGenericName=File Manager\n"
                              "GenericName[de]=Dateiverwaltung\nKeywords=folder;\nKeywords[de]=Ordner;Ablage\n";
    const std::vector<std::pair<const char*, Terms>> cases{
        {"de", {"Files", "File Manager", "Dateiverwaltung", "folder", "Ordner", "Ablage"}},
        {"ja", {"Files", "File Manager", "File Manager", "folder", "folder"}},
    };
    for (const auto& [language, expected] : cases) {
        inChildProcess([&] {
            ASSERT_EQ(::setenv("LANGUAGE", language, 1), 0);
            ASSERT_EQ(::setenv("LC_ALL", "en_US.UTF-8", 1), 0);
            EXPECT_EQ(termsOf(lines), expected) << language;
        });
    }
}

TEST(SearchTerms, NameTheProgramThatIsMeant) {
    const std::vector<std::pair<std::string, Terms>> cases{
        {"Exec=gimp\n", {"gimp"}},
        {"Exec=env A=b /snap/bin/gimp %U\n", {"gimp"}},
        {"Exec=python3 /usr/share/tool/tool.py\n", {"tool.py"}},
        {"Exec=/usr/bin/flatpak run org.gimp.GIMP\nX-Flatpak=org.gimp.GIMP\n", {}},
        {"Exec=\n", {}},
        {"Exec=\"unclosed\n", {}},
    };
    for (const auto& [lines, expected] : cases) {
        EXPECT_EQ(termsOf(lines), expected) << lines;
    }
}

TEST(SearchTerms, AreNoneOfWhatIsNoApplication) {
    for (const char* contents : {"", "no entry", "[Desktop Entry]\nType=Link\nName=Link\n",
                                 "[Desktop Entry]\nType=Application\nHidden=true\nName=Hidden\n"}) {
        EXPECT_EQ(searchTerms(contents), std::vector<std::string>()) << contents;
    }
}

} // namespace
} // namespace platform::linux
