#pragma once

#include "Platform/HotKeyEvents.h"
#include "Platform/KWin/GlobalAccel.h"
#include "Platform/KWin/KeyLoan.h"
#include "Platform/Linux/Log.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform::kwin {

/// Borrows keys from other actions in KGlobalAccel. That changes the system's settings lastingly, so what is to be
/// given back is written down before: a program that is killed gives it back when it is started the next time. A list
/// that somebody else has changed meanwhile is left as it is. Waits for answers; main thread only.
class KeyLoans {
public:
    /// `file` is where the note is kept, absolute; nothing is ever borrowed without one. Reads it. A note that cannot
    /// be read is kept beside, and nothing of it is given back.
    KeyLoans(GlobalAccel& accel, std::optional<std::string> file, linux::Log log);

    /// The file of this user; nothing without a home folder. Reads the environment.
    [[nodiscard]] static std::optional<std::string> standardFile();

    /// The keys that are borrowed, according to the note.
    [[nodiscard]] std::vector<std::int32_t> borrowed() const;

    [[nodiscard]] bool isBorrowed(std::int32_t key) const { return lender(key) != nullptr; }

    /// The action that a key is borrowed from, the one that got its presses before; null where it is not borrowed.
    [[nodiscard]] const AccelAction* lender(std::int32_t key) const;

    /// What keeps a key that was refused from being lent, as far as that is known before; nothing where it could be.
    [[nodiscard]] std::optional<LoanObstacle> obstacle(std::int32_t key);

    /// Takes a key out of the lists of those that get its presses, and of nobody else's. Gives what has kept it from
    /// that; nothing where nobody but us has the key now. What was done of it is in the note either way.
    [[nodiscard]] std::optional<LoanObstacle> borrow(std::int32_t key);

    /// Gives a key back. Ours must have let go of it: a key that anybody has by now stays with them. Without an answer
    /// the note stays, and so does the duty.
    void giveBack(std::int32_t key);

    /// Gives back all that is borrowed.
    void giveBackAll();

    /// Forgets a loan whose list somebody else has changed, where one is there for this key.
    void confirm(std::int32_t key);

    /// Whether the user has given the key to another program since the consent.
    [[nodiscard]] bool isLeft(std::int32_t key) const;
    /// The user has given a key to this action: it stays there, and nobody else gets it back.
    void leave(std::int32_t key, const AccelAction& owner);
    /// The consent was given anew, or is gone.
    void forgetLeft();

private:
    void writeDown(const AccelAction& holder, const KeySequences& present, std::int32_t key);
    void dropFromAllBut(const AccelAction& owner, std::int32_t key);
    void removeEmpty();
    /// Whether KGlobalAccel answered.
    bool restore(KeyLoan& loan, const KeySequences& present, std::int32_t key);
    /// Writes the note, if it is another one by now; gives whether it is on the disk.
    bool keep();

    GlobalAccel& accel;
    std::optional<std::string> file;
    linux::Log log;
    KeyLoanNote note;
    /// As it is on the disk.
    KeyLoanNote kept;
};

} // namespace platform::kwin
