#include "Tessel/ObstacleText.h"

#include <array>
#include <cstddef>

namespace tessel {

namespace {

struct ObstacleWords {
    platform::LoanObstacle obstacle;
    std::string_view word;
    std::string_view sentence;
};

/// In the order of the values.
constexpr std::array obstacleWords{
    ObstacleWords{platform::LoanObstacle::heldBothWays, "heldBothWays",
                  "Tessel cannot borrow it: it is held in both ways that X11 offers"},
    ObstacleWords{platform::LoanObstacle::reserved, "reserved",
                  "Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it"},
    ObstacleWords{platform::LoanObstacle::notLent, "notLent",
                  "Tessel cannot borrow it: it could not be given back to the desktop"},
    ObstacleWords{platform::LoanObstacle::unknownShell, "unknownShell",
                  "Tessel cannot borrow it from this version of the desktop"},
    ObstacleWords{platform::LoanObstacle::oldExtension, "oldExtension",
                  "Tessel can borrow it after you log out and in again"},
    ObstacleWords{platform::LoanObstacle::particularLine, "particularLine",
                  "Tessel cannot borrow it: its line is for one keyboard or one layout only"},
    ObstacleWords{platform::LoanObstacle::keySequence, "keySequence",
                  "Tessel cannot borrow it: it is part of a sequence of keys"},
    ObstacleWords{platform::LoanObstacle::notWrittenDown, "notWrittenDown",
                  "Tessel cannot borrow it: the note on whose it is cannot be saved"},
    ObstacleWords{platform::LoanObstacle::notReleased, "notReleased",
                  "Tessel cannot borrow it: the desktop does not release it"},
};

constexpr bool areInOrder() {
    for (std::size_t place = 0; place < obstacleWords.size(); ++place) {
        if (static_cast<std::size_t>(obstacleWords.at(place).obstacle) != place) {
            return false;
        }
    }
    return true;
}
static_assert(areInOrder());

const ObstacleWords& wordsOf(platform::LoanObstacle obstacle) {
    return obstacleWords.at(static_cast<std::size_t>(obstacle));
}

} // namespace

std::string obstacleText(platform::LoanObstacle obstacle, const platform::Localization& localization) {
    return localization.text("Tessel", wordsOf(obstacle).sentence);
}

std::string_view obstacleWord(platform::LoanObstacle obstacle) {
    return wordsOf(obstacle).word;
}

} // namespace tessel
