#include "Platform/Linux/Applications/IconTheme.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform::linux {
namespace {

struct IconThemeTest : testing::Test {
    /// A theme with the given folders, each with the lines of its section in the theme's description.
    void addTheme(const std::string& base, const std::string& name, const std::string& inherits,
                  const std::vector<std::pair<std::string, std::string>>& sizes) const {
        std::string list;
        std::string groups;
        for (const auto& [path, lines] : sizes) {
            list += path + ",";
            groups.append("[").append(path).append("]\n").append(lines).append("\n");
        }
        writeBelow(base + "/" + name + "/index.theme",
                   "[Icon Theme]\nName=A\nInherits=" + inherits + "\nDirectories=" + list + "\n" + groups);
    }

    [[nodiscard]] std::string find(const std::string& icon, int size, int scale = 1,
                                   const std::string& theme = "theme") const {
        IconTheme themes({user, system}, theme);
        const auto found = themes.find(icon, size, scale);
        return found ? std::filesystem::relative(*found, folder.path).string() : "";
    }

    TemporaryFolder folder;
    std::string user = folder / "user";
    std::string system = folder / "system";
};

TEST_F(IconThemeTest, TakesTheFolderThatMatchesTheSizeAndElseTheNearest) {
    addTheme(system, "theme", "",
             {{"16", "Size=16\nType=Fixed"},
              {"32", "Size=32\nType=Threshold\nThreshold=4"},
              {"big", "Size=128\nMinSize=64\nMaxSize=256\nType=Scalable"}});
    for (const char* file : {"16/a.png", "32/a.png", "big/a.svg"}) {
        writeBelow(system + "/theme/" + file, "");
    }
    EXPECT_EQ(find("a", 16), "system/theme/16/a.png");
    EXPECT_EQ(find("a", 17), "system/theme/16/a.png");
    EXPECT_EQ(find("a", 8), "system/theme/16/a.png");
    EXPECT_EQ(find("a", 28), "system/theme/32/a.png");
    EXPECT_EQ(find("a", 36), "system/theme/32/a.png");
    EXPECT_EQ(find("a", 48), "system/theme/32/a.png");
    EXPECT_EQ(find("a", 55), "system/theme/big/a.svg");
    EXPECT_EQ(find("a", 200), "system/theme/big/a.svg");
    EXPECT_EQ(find("a", 1000), "system/theme/big/a.svg");
    EXPECT_EQ(find("b", 16), "");
}

TEST_F(IconThemeTest, PrefersTheFolderOfTheScale) {
    addTheme(system, "theme", "",
             {{"16", "Size=16\nType=Fixed"}, {"32", "Size=32\nType=Fixed"}, {"16@2", "Size=16\nScale=2\nType=Fixed"}});
    writeBelow(system + "/theme/16/a.png", "");
    writeBelow(system + "/theme/32/a.png", "");
    writeBelow(system + "/theme/32/b.png", "");
    writeBelow(system + "/theme/16/b.png", "");
    writeBelow(system + "/theme/16@2/a.png", "");
    EXPECT_EQ(find("a", 16, 1), "system/theme/16/a.png");
    EXPECT_EQ(find("a", 16, 2), "system/theme/16@2/a.png");
    EXPECT_EQ(find("a", 32, 1), "system/theme/32/a.png");
    EXPECT_EQ(find("b", 16, 2), "system/theme/32/b.png") << "as many pixels";
}

TEST_F(IconThemeTest, LooksInTheParentsThenInTheFallbackThenOutside) {
    const std::vector<std::pair<std::string, std::string>> sizes{{"16", "Size=16"}};
    addTheme(system, "theme", "first,second", sizes);
    addTheme(system, "first", "grandparent,hicolor", sizes);
    addTheme(system, "grandparent", "", sizes);
    addTheme(system, "second", "", sizes);
    addTheme(system, "hicolor", "", sizes);
    const std::vector<std::string> order{
        "system/theme/16", "system/first/16", "system/grandparent/16", "system/second/16", "system/hicolor/16", "user",
        "system"};
    for (const std::string& place : order) {
        writeBelow(folder / place + "/icon.png", "");
    }
    for (const std::string& place : order) {
        EXPECT_EQ(find("icon", 16), place + "/icon.png");
        std::filesystem::remove(folder / place + "/icon.png");
    }
    EXPECT_EQ(find("icon", 16), "");
}

TEST_F(IconThemeTest, ComesToAnEndWhenThemesInheritInCircles) {
    addTheme(system, "theme", "other,theme", {{"16", "Size=16"}});
    addTheme(system, "other", "theme,hicolor,missing", {{"16", "Size=16"}});
    addTheme(system, "hicolor", "theme,hicolor", {{"16", "Size=16"}});
    writeBelow(system + "/hicolor/16/a.png", "");
    EXPECT_EQ(find("a", 16), "system/hicolor/16/a.png");
    EXPECT_EQ(find("b", 16), "");
    EXPECT_EQ(find("a", 16, 1, "hicolor"), "system/hicolor/16/a.png");
    EXPECT_EQ(find("b", 16, 1, "hicolor"), "");
}

TEST_F(IconThemeTest, JoinsTheFoldersOfATheme) {
    addTheme(system, "theme", "", {{"16", "Size=16"}});
    writeBelow(user + "/theme/16/own.png", "");
    writeBelow(system + "/theme/16/own.png", "");
    writeBelow(system + "/theme/16/common.svg", "");
    EXPECT_EQ(find("own", 16), "user/theme/16/own.png");
    EXPECT_EQ(find("common", 16), "system/theme/16/common.svg");
}

TEST_F(IconThemeTest, PrefersPngToSvgToXpm) {
    addTheme(system, "theme", "", {{"16", "Size=16"}});
    for (const std::string ending : {".xpm", ".svg", ".png"}) {
        writeBelow(system + "/theme/16/a" + ending, "");
        EXPECT_EQ(find("a", 16), "system/theme/16/a" + ending);
    }
}

TEST_F(IconThemeTest, LeavesItsFoldersForNoName) {
    addTheme(system, "theme", "../outside,,.", {{"../outside", "Size=16"}, {"16", "Size=16"}});
    writeBelow(folder / "outside/16/a.png", "");
    writeBelow(system + "/outside/a.png", "");
    writeBelow(folder / "a.png", "");
    for (const char* name : {"a", "../a", "16/a", "", ".", "..", "/a"}) {
        EXPECT_EQ(find(name, 16), "") << name;
    }
    EXPECT_EQ(find("a", 16, 1, "../outside"), "");
}

TEST_F(IconThemeTest, DoesWithDescriptionsThatMakeNoSense) {
    writeBelow(user + "/theme/index.theme", "no key file");
    addTheme(system, "theme", "theme",
             {{"none", ""},
              {"zero", "Size=0"},
              {"huge", "Size=2147483647\nScale=2147483647\nThreshold=2147483647"},
              {"16", "Size=16\nType=Nonsense\nThreshold=x"}});
    writeBelow(system + "/theme/16/a.png", "");
    EXPECT_EQ(find("a", 16), "system/theme/16/a.png");
    EXPECT_EQ(find("a", 2'147'483'647, 2'147'483'647), "system/theme/16/a.png");
    EXPECT_EQ(find("a", -1, -1), "system/theme/16/a.png");
    EXPECT_EQ(find("a", 16, 1, "missing"), "");
}

} // namespace
} // namespace platform::linux
