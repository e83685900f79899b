#include "Platform/Linux/Applications/DesktopEntryCatalogue.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace platform::linux {
namespace {

struct DesktopEntryCatalogueTest : testing::Test {
    TemporaryFolder folder;
    std::string applications = folder / "applications";
    MainLoop loop;
    DesktopEntries entries{
        loop, {.folders = {applications, folder / "more"}, .currentDesktops = {}, .searchPath = folder / "bin"}};
    DesktopEntryCatalogue catalogue{entries};
};

TEST_F(DesktopEntryCatalogueTest, LocatesApplicationsAndKnowsThemByTheirLocations) {
    install(applications + "/org.example.Editor.desktop", "NoDisplay=true");
    install(folder / "more/kde/tool.desktop");
    for (const auto& [identifier, path] :
         {std::pair{"org.example.Editor", applications + "/org.example.Editor.desktop"},
          std::pair{"kde-tool", folder / "more/kde/tool.desktop"}}) {
        EXPECT_EQ(catalogue.location(identifier), path);
        EXPECT_EQ(catalogue.bundleIdentifier(path), identifier);
    }
    EXPECT_EQ(catalogue.location("org.example.editor"), std::nullopt);
    EXPECT_EQ(catalogue.location(""), std::nullopt);
}

TEST_F(DesktopEntryCatalogueTest, FindsAnApplicationThatIsInstalledLater) {
    EXPECT_EQ(catalogue.location("late"), std::nullopt);
    install(applications + "/late.desktop");
    EXPECT_EQ(catalogue.location("late"), applications + "/late.desktop");
}

TEST_F(DesktopEntryCatalogueTest, ListsWhatIsToBeShownOnThisDesktop) {
    const std::vector<std::pair<std::string, bool>> rows{
        {"", true},
        {"NoDisplay=true", false},
        {"NoDisplay=false", true},
        {"Hidden=true", false},
        {"OnlyShowIn=GNOME;Ours;", true},
        {"OnlyShowIn=GNOME;", false},
        {"NotShowIn=GNOME;", true},
        {"NotShowIn=Ours;", false},
        {"TryExec=missing", false},
        {"TryExec=there", true},
        {"Terminal=true", true},
    };
    DesktopEntries ours(
        loop, {.folders = {applications, folder / "more"}, .currentDesktops = {"Ours"}, .searchPath = folder / "bin"});
    DesktopEntryCatalogue listing(ours);
    writeBelow(folder / "bin/there", "");
    std::filesystem::permissions(folder / "bin/there", std::filesystem::perms::owner_all);
    for (const auto& [lines, isShown] : rows) {
        install(applications + "/kde/tool.desktop", lines);
        const std::vector<std::filesystem::path> expected(isShown ? 1 : 0, applications + "/kde/tool.desktop");
        EXPECT_EQ(listing.locations(), expected) << lines;
    }
}

TEST_F(DesktopEntryCatalogueTest, ListsEachIdentifierOnce) {
    install(applications + "/editor.desktop");
    install(folder / "more/editor.desktop");
    install(applications + "/hidden.desktop", "Hidden=true");
    install(folder / "more/hidden.desktop");
    install(applications + "/unlisted.desktop", "NoDisplay=true");
    install(folder / "more/unlisted.desktop");
    install(folder / "more/browser.desktop");
    writeBelow(folder / "more/link.desktop", "[Desktop Entry]\nType=Link\nName=Link\n");
    std::vector<std::filesystem::path> listed = catalogue.locations();
    std::ranges::sort(listed);
    EXPECT_EQ(listed,
              (std::vector<std::filesystem::path>{applications + "/editor.desktop", folder / "more/browser.desktop"}));
}

TEST_F(DesktopEntryCatalogueTest, DoesNotLocateAnApplicationWhoseProgramIsMissing) {
    install(applications + "/tool.desktop", "TryExec=tool");
    EXPECT_EQ(catalogue.location("tool"), std::nullopt);
    writeBelow(folder / "bin/tool", "");
    std::filesystem::permissions(folder / "bin/tool", std::filesystem::perms::owner_all);
    EXPECT_EQ(catalogue.location("tool"), applications + "/tool.desktop");
}

TEST_F(DesktopEntryCatalogueTest, KnowsEntriesOutsideTheFoldersByTheirFileOrWhatTheyLeadTo) {
    install(folder / "Desktop/org.example.Own.desktop");
    EXPECT_EQ(catalogue.bundleIdentifier(folder / "Desktop/org.example.Own.desktop"), "org.example.Own");

    install(applications + "/kde/tool.desktop");
    std::filesystem::create_symlink(applications + "/kde/tool.desktop", folder / "Desktop/My Tool.desktop");
    EXPECT_EQ(catalogue.bundleIdentifier(folder / "Desktop/My Tool.desktop"), "kde-tool");
    EXPECT_EQ(catalogue.bundleIdentifier(folder / "Desktop/../applications/kde/tool.desktop"), "kde-tool");
}

TEST_F(DesktopEntryCatalogueTest, TakesNothingElseForAnApplication) {
    writeBelow(applications + "/link.desktop", "[Desktop Entry]\nType=Link\nName=Link\nIcon=link\n");
    writeBelow(applications + "/broken.desktop", "broken");
    install(applications + "/hidden.desktop", "Hidden=true");
    install(applications + "/other.ending");
    std::filesystem::create_directory(applications + "/folder.desktop");
    for (const char* name :
         {"link.desktop", "broken.desktop", "hidden.desktop", "other.ending", "folder.desktop", "no.desktop"}) {
        const std::string path = applications + "/" + name;
        EXPECT_EQ(catalogue.bundleIdentifier(path), std::nullopt) << name;
        EXPECT_EQ(catalogue.displayName(path), name);
        EXPECT_EQ(catalogue.icon(path).description().source, ImageSource(ThemeIcon{"application-x-executable"}))
            << name;
    }
    EXPECT_EQ(catalogue.bundleIdentifier("relative.desktop"), std::nullopt);
    EXPECT_EQ(catalogue.bundleIdentifier(""), std::nullopt);
    EXPECT_EQ(catalogue.displayName(""), "");
}

TEST_F(DesktopEntryCatalogueTest, NamesApplicationsForPeople) {
    writeBelow(applications + "/a.desktop", "[Desktop Entry]\nType=Application\nName=Text Editor\n");
    writeBelow(applications + "/b.desktop", "[Desktop Entry]\nType=Application\n");
    EXPECT_EQ(catalogue.displayName(applications + "/a.desktop"), "Text Editor");
    EXPECT_EQ(catalogue.displayName(applications + "/b.desktop"), "b.desktop");
}

TEST_F(DesktopEntryCatalogueTest, KnowsWhatElseApplicationsAreFoundBy) {
    const std::string path = applications + "/a.desktop";
    install(path, "GenericName=Image Editor");
    EXPECT_EQ(catalogue.searchTerms(path), (std::vector<std::string>{"a", "Image Editor", "Image Editor"}));
    for (const char* other : {"/no.desktop", "", "a.desktop"}) {
        EXPECT_EQ(catalogue.searchTerms(applications + other), std::vector<std::string>()) << other;
    }
    EXPECT_EQ(catalogue.searchTerms("a.desktop"), std::vector<std::string>());
}

TEST_F(DesktopEntryCatalogueTest, HasIconsByNameOrFile) {
    using Source = ImageSource;
    const auto icon = [&](const std::string& value) {
        install(applications + "/a.desktop", "Icon=" + value);
        return catalogue.icon(applications + "/a.desktop").description().source;
    };
    EXPECT_EQ(icon("editor"), Source(ThemeIcon{"editor"}));
    EXPECT_EQ(icon("editor.png"), Source(ThemeIcon{"editor"}));
    EXPECT_EQ(icon("editor.svg"), Source(ThemeIcon{"editor"}));
    EXPECT_EQ(icon("mini.editor"), Source(ThemeIcon{"mini.editor"}));
    EXPECT_EQ(icon(".png"), Source(ThemeIcon{".png"}));
    EXPECT_EQ(icon("/opt/editor/icon.png"), Source(ImageFile{"/opt/editor/icon.png"}));
    EXPECT_EQ(icon(""), Source(ThemeIcon{"application-x-executable"}));
}

} // namespace
} // namespace platform::linux
