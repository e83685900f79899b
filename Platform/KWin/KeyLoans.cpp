#include "Platform/KWin/KeyLoans.h"

#include "Platform/Linux/BaseFolders.h"
#include "Platform/Linux/Settings/DurableFile.h"

#include <algorithm>
#include <expected>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace platform::kwin {

namespace {

/// Several programs may share a key that was granted to all who asked. A holder that does not let go must not be asked
/// for ever.
constexpr int mostHolders = 8;

bool isOurs(const AccelAction& action) {
    return action.component == GlobalAccel::ownComponent;
}

/// The titles may be in another language by now.
bool isSame(const AccelAction& one, const AccelAction& other) {
    return one.component == other.component && one.action == other.action;
}

bool has(const KeyLoan& loan, std::int32_t key) {
    return std::ranges::find(loan.borrowed, key) != loan.borrowed.end();
}

/// Another program has the key by now, so it is not given back.
void drop(KeyLoan& loan, std::int32_t key) {
    std::erase(loan.borrowed, key);
    std::erase(loan.keys, sequenceOf(key));
}

} // namespace

KeyLoans::KeyLoans(GlobalAccel& accel, std::optional<std::string> noteFile, linux::Log log)
    : accel(accel)
    , file(std::move(noteFile))
    , log(std::move(log)) {
    if (!file) {
        return;
    }
    const auto contents = linux::DurableFile::read(*file);
    if (contents && !*contents) {
        return;
    }
    auto read = contents ? KeyLoanNote::read(**contents) : std::nullopt;
    if (read) {
        note = *std::move(read);
        kept = note;
        return;
    }
    const std::string reason = contents ? "it is malformed" : contents.error().reason;
    const auto beside = linux::DurableFile::keepBeside(*file);
    this->log("the note of borrowed shortcuts cannot be read (" + reason + "); " +
              (beside && *beside ? "it is kept as " + **beside : "it stays where it is"));
    if (!beside) {
        // Writing another one would lose it.
        file.reset();
    }
}

std::optional<std::string> KeyLoans::standardFile() {
    const auto state = linux::BaseFolders::ofThisProcess().userState;
    return state ? std::optional(*state + "/tessel/borrowed-shortcuts.json") : std::nullopt;
}

std::vector<std::int32_t> KeyLoans::borrowed() const {
    std::vector<std::int32_t> keys;
    for (const KeyLoan& loan : note.loans) {
        std::ranges::copy_if(loan.borrowed, std::back_inserter(keys),
                             [&](std::int32_t key) { return std::ranges::find(keys, key) == keys.end(); });
    }
    return keys;
}

const AccelAction* KeyLoans::lender(std::int32_t key) const {
    const auto found = std::ranges::find_if(note.loans, [&](const KeyLoan& loan) { return has(loan, key); });
    return found == note.loans.end() ? nullptr : &found->holder;
}

bool KeyLoans::canBorrow(std::int32_t key) {
    const auto holder = accel.recipient(key);
    if (!file || !holder || !*holder || isOurs(**holder)) {
        return false;
    }
    const auto keys = accel.keysOf(**holder);
    return keys && without(*keys, key);
}

bool KeyLoans::borrow(std::int32_t key) {
    for (int holders = 0; file && holders < mostHolders; ++holders) {
        const auto holder = accel.recipient(key);
        if (!holder || !*holder || isOurs(**holder)) {
            return holder.has_value();
        }
        const auto present = accel.keysOf(**holder);
        const auto others = present ? without(*present, key) : std::nullopt;
        if (!others) {
            return false;
        }
        const KeyLoanNote former = note;
        if (holders == 0) {
            // An earlier lender has lost the key to this holder while nobody was there to see it.
            dropFromAllBut(**holder, key);
        }
        writeDown(**holder, *present, key);
        if (!keep()) {
            note = former;
            return false;
        }
        if (!accel.setKeysOf(**holder, *others)) {
            return false;
        }
    }
    return false;
}

void KeyLoans::giveBack(std::int32_t key) {
    // Those who shared a key all get it, in the order in which they had it.
    std::vector<AccelAction> owners;
    for (KeyLoan& loan : note.loans) {
        if (!has(loan, key)) {
            continue;
        }
        owners.push_back(loan.holder);
        const auto present = accel.keysOf(loan.holder);
        const auto recipient = accel.recipient(key);
        if (!present || !recipient || (*recipient && isOurs(**recipient))) {
            break;
        }
        if (!loan.accountsFor(*present)) {
            loan.borrowed.clear();
        } else if (*recipient &&
                   std::ranges::none_of(owners, [&](const auto& owner) { return isSame(owner, **recipient); })) {
            drop(loan, key);
        } else if (!restore(loan, *present, key)) {
            break;
        }
    }
    removeEmpty();
    keep();
}

void KeyLoans::giveBackAll() {
    for (const std::int32_t key : borrowed()) {
        giveBack(key);
    }
}

void KeyLoans::confirm(std::int32_t key) {
    const auto found = std::ranges::find_if(note.loans, [&](const KeyLoan& loan) { return has(loan, key); });
    const auto present =
        found == note.loans.end() ? std::unexpected(GlobalAccel::NoAnswer{}) : accel.keysOf(found->holder);
    if (present && !found->accountsFor(*present)) {
        note.loans.erase(found);
        keep();
    }
}

bool KeyLoans::isLeft(std::int32_t key) const {
    return std::ranges::find(note.left, key) != note.left.end();
}

void KeyLoans::leave(std::int32_t key, const AccelAction& owner) {
    dropFromAllBut(owner, key);
    for (KeyLoan& loan : note.loans) {
        std::erase(loan.borrowed, key);
    }
    removeEmpty();
    if (!isLeft(key)) {
        note.left.push_back(key);
    }
    keep();
}

void KeyLoans::forgetLeft() {
    note.left.clear();
    keep();
}

void KeyLoans::writeDown(const AccelAction& holder, const KeySequences& present, std::int32_t key) {
    std::erase_if(note.loans,
                  [&](const KeyLoan& loan) { return isSame(loan.holder, holder) && !loan.accountsFor(present); });
    auto loan = std::ranges::find_if(note.loans, [&](const KeyLoan& each) { return isSame(each.holder, holder); });
    if (loan == note.loans.end()) {
        loan = note.loans.insert(loan, {.holder = holder, .keys = present, .borrowed = {}});
    }
    if (!has(*loan, key)) {
        loan->borrowed.push_back(key);
    }
}

void KeyLoans::dropFromAllBut(const AccelAction& owner, std::int32_t key) {
    for (KeyLoan& loan : note.loans) {
        if (has(loan, key) && !isSame(loan.holder, owner)) {
            drop(loan, key);
        }
    }
    removeEmpty();
}

void KeyLoans::removeEmpty() {
    std::erase_if(note.loans, [](const KeyLoan& loan) { return loan.borrowed.empty(); });
}

bool KeyLoans::restore(KeyLoan& loan, const KeySequences& present, std::int32_t key) {
    KeyLoan rest = loan;
    std::erase(rest.borrowed, key);
    KeyLoan missing = rest;
    std::erase_if(missing.borrowed, [&](std::int32_t other) { return without(present, other).has_value(); });
    if (!accel.setKeysOf(loan.holder, missing.remainder())) {
        return false;
    }
    // An action that is not known now, such as that of a program that is not installed, cannot be given anything; it
    // may be known again later.
    const auto restored = accel.keysOf(loan.holder);
    if (restored && !restored->empty()) {
        loan = rest;
    }
    return restored.has_value();
}

bool KeyLoans::keep() {
    if (note == kept || !file) {
        return note == kept;
    }
    std::expected<void, std::string> written;
    accel.withoutCounting([&] {
        std::error_code error;
        if (note == KeyLoanNote{} && (std::filesystem::remove(*file, error), !error)) {
            return;
        }
        written = linux::DurableFile::replace(*file, note.text());
    });
    if (!written) {
        log("the note of borrowed shortcuts cannot be written: " + written.error());
        return false;
    }
    kept = note;
    return true;
}

} // namespace platform::kwin
