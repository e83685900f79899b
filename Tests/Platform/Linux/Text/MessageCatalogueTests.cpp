#include "Platform/Linux/Text/MessageCatalogue.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

std::string catalogueFile(const std::string& language) {
    return contentsOf(std::string(TESSEL_TEST_LOCALE_TREE) + "/" + language + "/LC_MESSAGES/tessel.mo");
}

/// The same file as a machine of the other byte order writes it.
std::string turnedRound(std::string file) {
    const auto number = [&](std::size_t place) {
        std::uint32_t value = 0;
        std::memcpy(&value, file.data() + place, sizeof(value));
        return value;
    };
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < 28; place += 4) {
        places.push_back(place);
    }
    for (const std::size_t table : {number(12), number(16)}) {
        for (std::size_t entry = 0; entry < std::size_t{number(8)} * 8; entry += 4) {
            places.push_back(table + entry);
        }
    }
    for (const std::size_t place : places) {
        std::reverse(file.begin() + static_cast<std::ptrdiff_t>(place),
                     file.begin() + static_cast<std::ptrdiff_t>(place) + 4);
    }
    return file;
}

TEST(MessageCatalogue, HasTextsInTheirContext) {
    const auto german = MessageCatalogue::parse(catalogueFile("de"));
    ASSERT_TRUE(german);
    EXPECT_EQ(german->text("Tessel", "Paused"), "Pausiert");
    EXPECT_EQ(german->text("CorvidKit", "Quit"), "Beenden");
    EXPECT_EQ(german->text("Tessel", "Quit"), std::nullopt);
    EXPECT_EQ(german->text("Tessel", "%n apps", 1), "%n App");
    EXPECT_EQ(german->text("Tessel", "%n apps", 5), "%n Apps");
    // The plural is no text of its own.
    EXPECT_EQ(german->text("Tessel", ""), std::nullopt);
}

TEST(MessageCatalogue, ComesInEitherOrderOfBytes) {
    const auto german = MessageCatalogue::parse(turnedRound(catalogueFile("de")));
    ASSERT_TRUE(german);
    EXPECT_EQ(german->text("Tessel", "Paused"), "Pausiert");
    EXPECT_EQ(german->text("Tessel", "%n apps", 1), "%n App");
}

TEST(MessageCatalogue, OfAnyMadnessIsReadWithoutHarm) {
    const std::string whole = catalogueFile("fr");
    for (std::size_t length = 0; length <= whole.size(); length += length < 64 ? 1 : 37) {
        if (const auto cut = MessageCatalogue::parse(whole.substr(0, length))) {
            static_cast<void>(cut->text("Tessel", "%n apps", 3));
        }
    }
    for (std::size_t place = 4; place < 600; ++place) {
        for (const char byte : {'\x00', '\x7F', '\xFF'}) {
            std::string broken = whole;
            broken[place] = byte;
            const auto catalogue = MessageCatalogue::parse(std::move(broken));
            ASSERT_TRUE(catalogue);
            static_cast<void>(catalogue->text("Tessel", "%n apps", 3));
        }
    }
    EXPECT_FALSE(MessageCatalogue::parse(""));
    EXPECT_FALSE(MessageCatalogue::parse(std::string(100, '\0')));
    EXPECT_FALSE(MessageCatalogue::read("/dev/zero"));
}

} // namespace
} // namespace platform::linux
