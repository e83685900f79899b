#include "Platform/KWin/KeyLoan.h"

#include <gtest/gtest.h>

#include <rapidcheck.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::kwin {
namespace {

constexpr KeySequence a = sequenceOf(1);
constexpr KeySequence b = sequenceOf(2);
constexpr KeySequence c = sequenceOf(3);
constexpr KeySequence row{1, 2, 0, 0};
const AccelAction lendingAction{
    .component = "kwin", .action = "Walk", .componentTitle = "KWin", .actionTitle = "Geh “weiter”"};

TEST(KeyLoan, ALooseKeyCanBeTakenOutOfAListAndARowStays) {
    EXPECT_EQ(without({a, b, c}, 2), (KeySequences{a, c}));
    EXPECT_EQ(without({a, b, a}, 1), KeySequences{b});
    EXPECT_EQ(without({a}, 1), KeySequences{});
    EXPECT_EQ(without({row, a}, 1), KeySequences{row});
    EXPECT_EQ(without({row}, 1), std::nullopt);
    EXPECT_EQ(without({}, 1), std::nullopt);
}

TEST(KeyLoan, AListWithoutSomeOfTheBorrowedKeysIsAccountedFor) {
    const KeyLoan loan{.holder = lendingAction, .keys = {a, row, KeySequence{}, b, c}, .borrowed = {1, 3}};
    EXPECT_EQ(loan.remainder(), (KeySequences{row, KeySequence{}, b}));
    struct Case {
        KeySequences present;
        bool isAccountedFor;
    };
    for (const auto& [present, isAccountedFor] : {
             Case{{a, row, b, c}, true},
             Case{{row, b, c}, true},
             Case{{row, b}, true},
             Case{{b, row}, true},
             Case{{KeySequence{}, row, b, KeySequence{}}, true},
             Case{{row}, false},
             Case{{a, b, c}, false},
             Case{{row, b, sequenceOf(4)}, false},
             Case{{row, b, b}, false},
             Case{{}, false},
         }) {
        EXPECT_EQ(loan.accountsFor(present), isAccountedFor) << testing::PrintToString(present);
    }
}

TEST(KeyLoan, ANoteIsReadAsItWasWritten) {
    EXPECT_TRUE(rc::check([](const std::vector<std::int32_t>& keys, const std::vector<std::int32_t>& left) {
        KeyLoanNote note{.loans = {}, .left = left};
        for (const std::int32_t key : keys) {
            note.loans.push_back({.holder = lendingAction, .keys = {sequenceOf(key), row}, .borrowed = {key}});
        }
        RC_ASSERT(KeyLoanNote::read(note.text()) == note);
    }));
}

TEST(KeyLoan, WhatIsNotWholeIsNoNote) {
    constexpr const char* whole = R"({"loans":[{"component":"x","action":"y","componentTitle":"","actionTitle":"",)"
                                  R"("keys":[[1,0,0,0],[2,0,0,0]],"borrowed":[1]}],"left":[7]})";
    ASSERT_TRUE(KeyLoanNote::read(whole));
    struct Case {
        const char* part;
        const char* instead;
    };
    for (const auto& [part, instead] : {
             Case{R"("loans":[{)", R"("loans":{"a":[{)"},
             Case{R"("loans")", R"("loan")"},
             Case{R"("component":"x")", R"("component":"")"},
             Case{R"("action":"y")", R"("action":5)"},
             Case{R"("keys")", R"("kies")"},
             Case{R"([2,0,0,0])", R"([2,0,0])"},
             Case{R"([2,0,0,0])", R"([2,0,0,0.5])"},
             Case{R"([2,0,0,0])", R"([4294967296,0,0,0])"},
             Case{R"([2,0,0,0])", R"("2")"},
             Case{R"("borrowed":[1])", R"("borrowed":[])"},
             Case{R"("borrowed":[1])", R"("borrowed":[3])"},
             Case{R"("borrowed":[1])", R"("borrowed":null)"},
             Case{R"("left":[7])", R"("left":7)"},
             Case{R"(,"left":[7])", ""},
             Case{R"(]})", ""},
         }) {
        std::string broken = whole;
        broken.replace(broken.rfind(part), std::string_view(part).size(), instead);
        EXPECT_FALSE(KeyLoanNote::read(broken)) << broken;
    }
}

} // namespace
} // namespace platform::kwin
