#include "Platform/Simulated/Desktop.h"
#include "Tessel/InstalledApplications.h"
#include "Tessel/Prefs.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessel {
namespace {

using Lines = std::vector<std::string>;

class InstalledApplications : public testing::Test {
protected:
    void install(const std::string& name, bool isShown = true) {
        const std::string identifier = "org.example." + std::to_string(++installed);
        desktop.applicationCatalogue.install("/applications/" + identifier, {identifier, name, "icon", isShown});
    }

    void installOther(const std::string& identifier, const std::string& name, const Lines& terms) {
        desktop.applicationCatalogue.install("/applications/" + identifier, {identifier, name, "icon", true, terms});
    }

    static Lines names(const std::vector<InstalledApplication>& applications) {
        Lines found;
        for (const InstalledApplication& application : applications) {
            found.push_back(application.name);
        }
        return found;
    }

    static Lines found(std::string_view text) {
        const std::vector<InstalledApplication> all = installedApplications();
        Lines found;
        for (const std::size_t place : ApplicationSearch(all).find(text)) {
            found.push_back(all.at(place).name);
        }
        return found;
    }

    platform::simulated::Desktop desktop;
    int installed = 0;
};

TEST_F(InstalledApplications, AreListedWithNameIdentifierLocationAndIcon) {
    desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Text Editor", "editor"});
    const std::vector<InstalledApplication> list = installedApplications();
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.front().id(), "org.example.Editor");
    EXPECT_EQ(list.front().name, "Text Editor");
    EXPECT_EQ(list.front().location, "/applications/Editor");
    EXPECT_EQ(list.front().icon.description().source,
              decltype(platform::ImageDescription::source)(platform::ThemeIcon{.name = "editor"}));
    EXPECT_EQ(list.front().icon.description().size, (corvid::CGSize{20, 20}));
}

TEST_F(InstalledApplications, AreSortedByNameAndWithoutThoseThatAreNotShown) {
    for (const char* name : {"terminal", "Archive", "Mail.app", "browser"}) {
        install(name);
    }
    install("A part of something", false);
    EXPECT_EQ(names(installedApplications()), (Lines{"Archive", "browser", "Mail", "terminal"}));
}

TEST_F(InstalledApplications, HaveTheActionsOfTheirRules) {
    installOther("org.example.Editor", "Editor", {});
    installOther("org.example.Mail", "Mail", {});
    desktop.standardUserDefaults[Prefs::rules] = {{"org.example.Mail", WindowAction::center}};
    const std::vector<InstalledApplication> list = installedApplications();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].ruleAction, std::nullopt);
    EXPECT_EQ(list[1].ruleAction, WindowAction::center);
}

TEST_F(InstalledApplications, AreFoundByWhatElseTheyGoBy) {
    installOther("gimp", "GNU Image Manipulation Program", {"Image Editor", "graphic", "gimp-2.10"});
    installOther("org.inkscape.Inkscape", "Inkscape", {"Vector Graphics Editor", "Gravité", "inkscape"});
    installOther("org.example.Viewer", "Viewer for GIMP pictures", {"Image Viewer"});
    installOther("org.example.Gimpel", "Gimpel", {"Bird"});
    const std::string gimp = "GNU Image Manipulation Program";
    const std::string viewer = "Viewer for GIMP pictures";
    const std::vector<std::pair<std::string_view, Lines>> cases{
        {"gimp", {"Gimpel", viewer, gimp}},
        {"GIMP", {"Gimpel", viewer, gimp}},
        {"gimp-2", {gimp}},
        {"image", {gimp, viewer}},
        {"image editor", {gimp}},
        {"graph", {gimp, "Inkscape"}},
        {"gravite", {"Inkscape"}},
        {"vector ink", {"Inkscape"}},
        {"org.inkscape", {"Inkscape"}},
        {"raph", {}},
        {"gimp bird", {"Gimpel"}},
        {"gimp nothing", {}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(found(text), expected) << text;
    }
}

TEST_F(InstalledApplications, AreFoundByTheBeginningsOfTheirWordsFirst) {
    for (const char* name : {"Context Viewer", "Editor for Text", "Text Editor", "Terminal", "Xedit"}) {
        install(name);
    }
    const std::vector<std::pair<std::string_view, Lines>> cases{
        {"", {"Context Viewer", "Editor for Text", "Terminal", "Text Editor", "Xedit"}},
        {"  ", {"Context Viewer", "Editor for Text", "Terminal", "Text Editor", "Xedit"}},
        {"-", {"Context Viewer", "Editor for Text", "Terminal", "Text Editor", "Xedit"}},
        {"t", {"Terminal", "Text Editor", "Editor for Text", "Context Viewer", "Xedit"}},
        {"TEXT", {"Text Editor", "Editor for Text", "Context Viewer"}},
        {"edit", {"Editor for Text", "Text Editor", "Xedit"}},
        {"ed te", {"Editor for Text", "Text Editor"}},
        {"text-editor", {"Text Editor", "Editor for Text"}},
        {"text e", {"Text Editor", "Editor for Text", "Context Viewer"}},
        {"tex e", {"Editor for Text", "Text Editor", "Context Viewer"}},
        {"ext view", {"Context Viewer"}},
        {"minal", {"Terminal"}},
        {"none", {}},
        {"text none", {}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(found(text), expected) << text;
    }
}

TEST_F(InstalledApplications, AreFoundWithAndWithoutAccents) {
    install("Éditeur de texte");
    install("Vidéo");
    for (const char* text : {"edi", "Édi", "TEXTE é"}) {
        EXPECT_EQ(found(text), Lines{"Éditeur de texte"}) << text;
    }
    EXPECT_EQ(found("video"), Lines{"Vidéo"});
    EXPECT_EQ(found("deo"), Lines{"Vidéo"});
}

TEST_F(InstalledApplications, AreFoundByWordsOfOtherScripts) {
    install("Правка текста");
    EXPECT_EQ(found("текс"), Lines{"Правка текста"});
    EXPECT_EQ(found("авк"), Lines{"Правка текста"});
}

} // namespace
} // namespace tessel
