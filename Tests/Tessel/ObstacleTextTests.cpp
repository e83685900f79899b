#include "Platform/Simulated/Localization.h"
#include "Tessel/ObstacleText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {
namespace {

using platform::LoanObstacle;

TEST(ObstacleText, EachObstacleHasAWordAndASentenceOfItsOwn) {
    const platform::simulated::Localization localization;
    struct Row {
        LoanObstacle obstacle;
        std::string_view word;
        std::string sentence;
    };
    const std::vector<Row> rows{
        {LoanObstacle::heldBothWays, "heldBothWays",
         "Tessel cannot borrow it: it is held in both ways that X11 offers"},
        {LoanObstacle::reserved, "reserved",
         "Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it"},
        {LoanObstacle::notLent, "notLent", "Tessel cannot borrow it: it could not be given back to the desktop"},
        {LoanObstacle::unknownShell, "unknownShell", "Tessel cannot borrow it from this version of the desktop"},
        {LoanObstacle::oldExtension, "oldExtension", "Tessel can borrow it after you log out and in again"},
        {LoanObstacle::particularLine, "particularLine",
         "Tessel cannot borrow it: its line is for one keyboard or one layout only"},
        {LoanObstacle::keySequence, "keySequence", "Tessel cannot borrow it: it is part of a sequence of keys"},
        {LoanObstacle::notWrittenDown, "notWrittenDown",
         "Tessel cannot borrow it: the note on whose it is cannot be saved"},
        {LoanObstacle::notReleased, "notReleased", "Tessel cannot borrow it: the desktop does not release it"},
    };
    std::set<std::string> sentences;
    for (const Row& row : rows) {
        EXPECT_EQ(obstacleWord(row.obstacle), row.word);
        EXPECT_EQ(obstacleText(row.obstacle, localization), row.sentence);
        sentences.insert(row.sentence);
    }
    EXPECT_EQ(sentences.size(), static_cast<std::size_t>(LoanObstacle::notReleased) + 1);
}

TEST(ObstacleText, IsInTheUsersLanguage) {
    platform::simulated::Localization localization;
    localization.texts = {
        {"Tessel/Tessel cannot borrow it: it is part of a sequence of keys", "Mit ihm beginnt eine Folge"}};
    EXPECT_EQ(obstacleText(LoanObstacle::keySequence, localization), "Mit ihm beginnt eine Folge");
}

} // namespace
} // namespace tessel
