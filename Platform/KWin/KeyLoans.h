#pragma once

#include "Platform/KWin/GlobalAccel.h"
#include "Platform/KWin/KeyLoan.h"
#include "Platform/Linux/Log/Log.h"
#include "Platform/Seam/Desktop/HotKeyEvents.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform::kwin {

/// Borrows keys from other actions in KGlobalAccel. That changes the system's settings permanently, so a note of every
/// loan is written first: after a crash, the next start of the program gives the keys back. A list that was changed
/// elsewhere meanwhile stays as it is. Waits for replies; main thread only.
class KeyLoans {
public:
    /// `file` is the absolute path of the note; without one, nothing is borrowed. Reads it. A note that cannot be read
    /// is kept under another name, and none of its keys is given back.
    KeyLoans(GlobalAccel& accel, std::optional<std::string> file, linux::Log log);

    /// This user's file; empty without a home folder. Reads the environment.
    [[nodiscard]] static std::optional<std::string> standardFile();

    /// The borrowed keys, according to the note.
    [[nodiscard]] std::vector<std::int32_t> borrowed() const;

    [[nodiscard]] bool isBorrowed(std::int32_t key) const { return lender(key) != nullptr; }

    /// The action that a key is borrowed from, the former receiver of its presses; null if it is not borrowed.
    [[nodiscard]] const AccelAction* lender(std::int32_t key) const;

    /// The reason why a refused key cannot be lent, as far as it is known before trying; nothing if the key could be
    /// lent.
    [[nodiscard]] std::optional<LoanObstacle> obstacle(std::int32_t key);

    /// Takes a key out of the lists of those that get its presses, and of nobody else's. Gives what has kept it from
    /// that; nothing where nobody but us has the key now. What was done of it is in the note either way.
    [[nodiscard]] std::optional<LoanObstacle> borrow(std::int32_t key);

    /// Gives a key back. Ours must have released it: if another action has the key by now, that action keeps it.
    /// Without a reply the note stays, and the key is given back later.
    void giveBack(std::int32_t key);

    /// Gives all borrowed keys back.
    void giveBackAll();

    /// Forgets the loan of this key if its list was changed elsewhere.
    void confirm(std::int32_t key);

    /// Whether the user has given the key to another program since the consent.
    [[nodiscard]] bool isLeft(std::int32_t key) const;
    /// The user has given a key to this action: it stays there, and no former holder gets it back.
    void leave(std::int32_t key, const AccelAction& owner);
    /// The user has given the consent again, or withdrawn it.
    void forgetLeft();

private:
    void writeDown(const AccelAction& holder, const KeySequences& present, std::int32_t key);
    void dropFromAllBut(const AccelAction& owner, std::int32_t key);
    void removeEmpty();
    /// Whether KGlobalAccel replied.
    bool restore(KeyLoan& loan, const KeySequences& present, std::int32_t key);
    /// Writes the note if it has changed; returns whether it is on the disk.
    bool keep();

    GlobalAccel& accel;
    std::optional<std::string> file;
    linux::Log log;
    KeyLoanNote note;
    /// As it is on the disk.
    KeyLoanNote kept;
};

} // namespace platform::kwin
