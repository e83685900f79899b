#include "Platform/GnomeShell/ExtensionFiles.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform::gnomeshell {
namespace {

namespace fs = std::filesystem;

constexpr const char* inData = "/gnome-shell/extensions/tessel@corvid.org";

/// A copy of the extension: its maker, its version, and the versions of the shell that it supports.
struct Made {
    std::string maker;
    std::string version = "1.5";
    std::string shells = R"("45", "48", "51")";
};

class FilesOfTheExtension : public testing::Test {
protected:
    FilesOfTheExtension() {
        put(folder / "source/legacy", {.maker = "legacy", .shells = R"("43", "44")"});
        put(folder / "source/esm", {.maker = "esm"});
        fs::create_directories(folder / "system");
    }

    static void put(const std::string& place, const Made& made) {
        fs::create_directories(place);
        write(place + "/metadata.json", R"({"version-name": ")" + made.version + R"(", "revision": ")" + made.maker +
                                            R"(", "shell-version": [)" + made.shells + "]}");
        write(place + "/extension.js", made.maker + " script");
    }

    [[nodiscard]] std::string script() const { return contentsOf(place + "/extension.js"); }

    TemporaryFolder folder;
    std::string place = folder / "home" + inData;
    std::string forAll = folder / "system" + inData;
    ExtensionFiles files{folder / "source", {folder / "home", folder / "system"}};
};

TEST_F(FilesOfTheExtension, AreInstalledInTheFormThatTheShellReads) {
    EXPECT_EQ(files.nextRevision(), std::nullopt);
    EXPECT_TRUE(files.install("43.9"));
    EXPECT_EQ(script(), "legacy script");
    EXPECT_EQ(contentsOf(place + "/metadata.json"), contentsOf(folder / "source/legacy/metadata.json"));
    EXPECT_EQ(files.nextRevision(), "legacy");
    EXPECT_EQ(namesIn(place).size(), 2U);
    for (const auto& [version, form] : {std::pair("44.0", "legacy"),
                                        {"45.rc", "esm"},
                                        {"48.7", "esm"},
                                        {"", "legacy"},
                                        {"new", "legacy"},
                                        {"100", "esm"}}) {
        EXPECT_TRUE(files.install(version)) << version;
        EXPECT_EQ(script(), std::string(form) + " script") << version;
    }
}

/// Each state of both copies, and the copy in the home after a refresh and after an installation.
TEST_F(FilesOfTheExtension, AreKeptFromBeingStale) {
    const Made own{.maker = "esm"};
    const Made older{.maker = "older", .version = "1.4"};
    const Made tenth{.maker = "tenth", .version = "1.10"};
    const Made build{.maker = "build"};
    const Made legacy{.maker = "legacy", .shells = R"("43", "44")"};
    const Made blind{.maker = "blind", .version = "2.0", .shells = R"("43")"};
    struct Row {
        const char* what;
        std::optional<Made> inHome;
        std::optional<Made> forAll;
        /// The maker of the copy in the home afterwards; empty without one.
        std::string refreshed;
        std::string installed;
    };
    const std::vector<Row> rows{
        {"nothing is anywhere", {}, {}, "", "esm"},
        {"this program's is in the home", own, {}, "esm", "esm"},
        {"an older one is in the home", older, {}, "esm", "esm"},
        {"another build of the same version is in the home", build, {}, "esm", "esm"},
        {"the other form is in the home", legacy, {}, "esm", "esm"},
        {"a later program's is in the home", tenth, {}, "tenth", "esm"},
        {"a later program's, of no use to this shell, is in the home", blind, {}, "esm", "esm"},
        {"this program's is there for all", {}, own, "", ""},
        {"this program's is in both", own, own, "", ""},
        {"an older one hides this program's", older, own, "", ""},
        {"the other form hides this program's", legacy, own, "", ""},
        {"a later program's hides this program's", tenth, own, "tenth", ""},
        {"an older one is there for all", {}, older, "", "esm"},
        {"the other form is there for all", {}, legacy, "", "esm"},
        {"an older one is in both", older, older, "esm", "esm"},
        {"this program's hides an older one", own, older, "esm", "esm"},
        {"this program's hides a later one", own, tenth, "esm", "esm"},
    };
    for (const auto& [what, inHome, everybodys, refreshed, installed] : rows) {
        const auto arrange = [&] {
            fs::remove_all(place);
            fs::remove_all(forAll);
            if (inHome) {
                put(place, *inHome);
            }
            if (everybodys) {
                put(forAll, *everybodys);
            }
        };
        const auto maker = [&] {
            const std::string text = fs::exists(place + "/extension.js") ? script() : "";
            return text.substr(0, text.find(' '));
        };
        arrange();
        files.refresh("48.7");
        EXPECT_EQ(maker(), refreshed) << what << ", refreshed";
        EXPECT_EQ(fs::exists(place), !refreshed.empty()) << what;
        files.refresh("48.7");
        EXPECT_EQ(maker(), refreshed) << what << ", refreshed again";
        arrange();
        EXPECT_TRUE(files.install("48.7")) << what;
        EXPECT_EQ(maker(), installed) << what << ", installed";
        files.refresh("48.7");
        EXPECT_EQ(maker(), installed) << what << ", installed and refreshed";
    }
}

TEST_F(FilesOfTheExtension, ShowWhichCopyTheNextSessionLoads) {
    put(forAll, {.maker = "everybody's"});
    EXPECT_EQ(files.nextRevision(), "everybody's");
    put(place, {.maker = "mine"});
    EXPECT_EQ(files.nextRevision(), "mine");
    write(place + "/metadata.json", "{}");
    EXPECT_EQ(files.nextRevision(), "");
    write(place + "/metadata.json", "no description");
    EXPECT_EQ(files.nextRevision(), "");
}

TEST_F(FilesOfTheExtension, ThatAreBrokenAreReplaced) {
    for (const char* metadata : {"", "[]", R"({"version-name": 9, "shell-version": "48"})",
                                 R"({"version-name": "9", "shell-version": [48, null]})"}) {
        put(place, {.maker = "broken"});
        write(place + "/metadata.json", metadata);
        files.refresh("48.7");
        EXPECT_EQ(script(), "esm script") << metadata;
    }
    fs::remove(place + "/extension.js");
    files.refresh("48.7");
    EXPECT_EQ(script(), "esm script");
}

TEST_F(FilesOfTheExtension, LeaveTheUsersOwnFilesBesideThem) {
    put(place, {.maker = "older", .version = "1.4"});
    write(place + "/notes", "mine");
    put(forAll, {.maker = "esm"});
    files.refresh("48.7");
    EXPECT_EQ(namesIn(place).size(), 1U);
    EXPECT_EQ(contentsOf(place + "/notes"), "mine");
    EXPECT_EQ(files.nextRevision(), "esm");
}

TEST_F(FilesOfTheExtension, LeaveALinkOfTheUsersAlone) {
    fs::create_directories(folder / "home/gnome-shell/extensions");
    put(folder / "mine", {.maker = "mine", .version = "1.0"});
    fs::create_directory_symlink(folder / "mine", place);
    put(forAll, {.maker = "esm"});
    EXPECT_TRUE(files.install("48.7"));
    files.refresh("48.7");
    EXPECT_EQ(script(), "mine script");
    EXPECT_EQ(files.nextRevision(), "mine");
}

TEST_F(FilesOfTheExtension, CannotBeInstalledWithoutFolderOrSource) {
    EXPECT_FALSE(ExtensionFiles(folder / "nowhere", {folder / "home"}).install("43"));
    EXPECT_FALSE(ExtensionFiles(folder / "source", {}).install("43"));
    ExtensionFiles(folder / "source", {}).refresh("43");
    EXPECT_EQ(ExtensionFiles(folder / "source", {}).nextRevision(), std::nullopt);
    write(folder / "file", "");
    EXPECT_FALSE(ExtensionFiles(folder / "source", {folder / "file"}).install("43"));
}

} // namespace
} // namespace platform::gnomeshell
