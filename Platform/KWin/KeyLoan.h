#pragma once

#include "Platform/KWin/GlobalAccel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::kwin {

/// The keys that were borrowed from one action. Qt's keys.
struct KeyLoan {
    AccelAction holder;
    /// Its list before the first loan.
    KeySequences keys;
    /// Those of them that are, or are about to be, removed from it. Each is in the list, alone in its sequence.
    std::vector<std::int32_t> borrowed;

    /// The list while those keys are borrowed.
    [[nodiscard]] KeySequences remainder() const;

    /// Whether a list is a result of borrowing and giving back: the former list without some of the borrowed keys, in
    /// any order, because Plasma 6.7's KGlobalAccel keeps none. A program that was killed between writing the note and
    /// acting on it leaves such a list, too. Any other list is the user's own change.
    [[nodiscard]] bool accountsFor(const KeySequences& present) const;

    friend bool operator==(const KeyLoan&, const KeyLoan&) = default;
};

/// The state that outlives this program: the keys that it has borrowed, and those that it must leave alone.
struct KeyLoanNote {
    std::vector<KeyLoan> loans;
    /// Keys that the user has given to another program since the consent to borrow.
    std::vector<std::int32_t> left;

    /// As JSON; empty for a text that does not have the format of `text`.
    [[nodiscard]] static std::optional<KeyLoanNote> read(std::string_view text);
    [[nodiscard]] std::string text() const;

    friend bool operator==(const KeyLoanNote&, const KeyLoanNote&) = default;
};

/// The list without one key. Empty if the key is not in it, or only in a sequence with others.
[[nodiscard]] std::optional<KeySequences> without(const KeySequences& keys, std::int32_t key);

} // namespace platform::kwin
