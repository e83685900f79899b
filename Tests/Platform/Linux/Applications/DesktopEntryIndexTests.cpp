#include "Platform/Linux/Applications/DesktopEntryIndex.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

std::vector<std::string> identifiers(const DesktopEntryIndex& index) {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < index.size(); ++i) {
        result.emplace_back(index[i].identifier);
    }
    return result;
}

/// Two folders of desktop entries; the first one takes precedence.
struct DesktopEntryIndexTest : testing::Test {
    [[nodiscard]] DesktopEntryIndex read(const std::vector<std::string>& desktops = {}) const {
        return DesktopEntryIndex::read(std::array{first, second}, desktops);
    }

    TemporaryFolder folder;
    std::string first = folder / "first";
    std::string second = folder / "second";
};

TEST_F(DesktopEntryIndexTest, MakesIdsOfThePathsBelowTheFolder) {
    install(first + "/plain.desktop");
    install(first + "/kde/org/inner.desktop");
    install(second + "/org.example.Tool.desktop");
    writeBelow(first + "/mimeinfo.cache", "[Desktop Entry]\nType=Application\n");
    install(first + "/.desktop");
    const DesktopEntryIndex index = read();
    EXPECT_THAT(identifiers(index), UnorderedElementsAre("plain", "kde-org-inner", "org.example.Tool"));
    EXPECT_EQ(index.path(index.find("kde-org-inner").value()), first + "/kde/org/inner.desktop");
    EXPECT_EQ(index.path(index.find("org.example.Tool").value()), second + "/org.example.Tool.desktop");
    EXPECT_EQ(index.find("ORG.example.Tool"), std::nullopt);
    EXPECT_EQ(index.find(""), std::nullopt);
}

TEST_F(DesktopEntryIndexTest, KeepsTheFieldsThatIdentifyAnApplication) {
    install(second + "/tool.desktop", "Exec=env A=1 /usr/bin/tool --fast\nTryExec=tool\nStartupWMClass=Tool\n"
                                      "X-Flatpak=org.example.Tool\nX-SnapInstanceName=tool\nTerminal=true");
    const DesktopEntryIndex index = read();
    ASSERT_EQ(index.size(), 1U);
    EXPECT_EQ(index[0].program, "/usr/bin/tool");
    EXPECT_EQ(index[0].tryProgram, "tool");
    EXPECT_EQ(index[0].windowClass, "Tool");
    EXPECT_EQ(index[0].flatpak, "org.example.Tool");
    EXPECT_EQ(index[0].snapInstance, "tool");
    EXPECT_EQ(index[0].folder, 1U);
    EXPECT_TRUE(index[0].isShown);
    EXPECT_TRUE(index[0].hasArguments);
    EXPECT_TRUE(index[0].needsTerminal);
}

TEST_F(DesktopEntryIndexTest, TakesTheFirstEntryOfAnId) {
    install(first + "/a/b.desktop", "StartupWMClass=inner");
    install(first + "/a-b.desktop", "StartupWMClass=outer");
    install(second + "/a-b.desktop", "StartupWMClass=second");
    const DesktopEntryIndex index = read();
    ASSERT_EQ(index.size(), 1U);
    EXPECT_EQ(index[0].windowClass, "outer");
}

TEST_F(DesktopEntryIndexTest, HasNoneThatIsHiddenByTheFirstOfItsId) {
    writeBelow(first + "/gone.desktop", "[Desktop Entry]\nHidden=true\n");
    install(second + "/gone.desktop");
    install(first + "/kept.desktop");
    install(second + "/kept.desktop", "Hidden=true");
    EXPECT_THAT(identifiers(read()), ElementsAre("kept"));
}

TEST_F(DesktopEntryIndexTest, PassesOverWhatIsNoApplication) {
    writeBelow(first + "/broken.desktop", "this is no desktop entry");
    install(second + "/broken.desktop");
    writeBelow(first + "/link.desktop", "[Desktop Entry]\nType=Link\nURL=https://example.org\n");
    std::filesystem::create_directories(first + "/folder.desktop");
    install(first + "/folder.desktop/inner.desktop");
    ASSERT_EQ(::mkfifo((first + "/pipe.desktop").c_str(), 0600), 0);
    EXPECT_THAT(identifiers(read()), UnorderedElementsAre("broken", "folder.desktop-inner"));
}

TEST_F(DesktopEntryIndexTest, KnowsWhichEntriesThisDesktopLists) {
    install(first + "/a.desktop");
    install(first + "/b.desktop", "NoDisplay=true");
    install(first + "/c.desktop", "OnlyShowIn=KDE;");
    const DesktopEntryIndex index = read({"GNOME"});
    ASSERT_EQ(index.size(), 3U);
    EXPECT_TRUE(index[0].isShown);
    EXPECT_FALSE(index[1].isShown);
    EXPECT_FALSE(index[2].isShown);
}

TEST_F(DesktopEntryIndexTest, ComesToAnEndInLinksThatLeadInCircles) {
    install(first + "/a.desktop");
    install(second + "/b.desktop");
    std::filesystem::create_directory(first + "/inner");
    std::filesystem::create_directory_symlink(first, first + "/inner/up");
    std::filesystem::create_directory_symlink(first + "/inner", first + "/again");
    std::filesystem::create_directory_symlink(second, first + "/other");
    EXPECT_THAT(identifiers(read()), UnorderedElementsAre("a", "other-b", "b"));

    std::string deep = first;
    for (int depth = 0; depth < 20; ++depth) {
        deep += "/d";
    }
    install(deep + "/deep.desktop");
    EXPECT_THAT(identifiers(read()), UnorderedElementsAre("a", "other-b", "b"));
}

TEST_F(DesktopEntryIndexTest, TakesNoAbsurdValueForAName) {
    const std::string endless((std::size_t{1} << 20U) - 200, 'x');
    std::string keys;
    for (int key = 0; key < 20'000; ++key) {
        keys += "X-Key" + std::to_string(key) + "=value\n";
    }
    std::string quotes = "Exec=";
    for (int level = 0; level < 50'000; ++level) {
        quotes += R"("\\")";
    }
    install(first + "/class.desktop", "StartupWMClass=" + endless);
    install(first + "/exec.desktop", "Exec=/usr/bin/" + endless);
    install(first + "/keys.desktop", keys + "StartupWMClass=Keys");
    install(first + "/open.desktop", "Exec=\"" + endless);
    install(first + "/percent.desktop", "Exec=" + std::string(100'000, '%'));
    install(first + "/quotes.desktop", quotes);
    install(first + "/same.desktop", "Exec=env env env env -u\nTryExec=" + std::string(5000, '/'));
    const DesktopEntryIndex index = read();
    ASSERT_EQ(index.size(), 7U);
    for (std::size_t number = 0; number < index.size(); ++number) {
        const auto entry = index[number];
        EXPECT_EQ(entry.windowClass, entry.identifier == "keys" ? "Keys" : "");
        EXPECT_EQ(entry.tryProgram, "");
        EXPECT_LE(entry.program.size(), 4096U) << entry.identifier;
    }
    EXPECT_LT(index.footprint(), 10'000U);
}

TEST_F(DesktopEntryIndexTest, IsEmptyWithoutFolders) {
    EXPECT_EQ(read().size(), 0U);
    EXPECT_EQ(DesktopEntryIndex::read({}, {}).size(), 0U);
}

TEST_F(DesktopEntryIndexTest, IsSmall) {
    constexpr int count = 2000;
    for (int i = 0; i < count; ++i) {
        const std::string name = "org.example.Application" + std::to_string(i);
        std::string lines = "Exec=/usr/bin/application" + std::to_string(i) + " %U\nStartupWMClass=" + name + "\n";
        lines += "Comment[de]=" + std::string(5000, 'x');
        install(first + "/" + name + ".desktop", lines);
    }
    const DesktopEntryIndex index = read();
    EXPECT_EQ(index.size(), static_cast<std::size_t>(count));
    EXPECT_LT(index.footprint(), static_cast<std::size_t>(count) * 160);
}

} // namespace
} // namespace platform::linux
