#include "Platform/KWin/KeyLoan.h"

#include "Platform/Compositor/Json.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace platform::kwin {

namespace {

using compositor::Json;
using compositor::member;

bool isBorrowedSequence(const KeySequence& sequence, const std::vector<std::int32_t>& borrowed) {
    return std::ranges::any_of(borrowed, [&](std::int32_t key) { return sequence == sequenceOf(key); });
}

/// KGlobalAccel keeps an empty place for a key that it did not grant.
KeySequences withoutEmpty(KeySequences keys) {
    std::erase(keys, KeySequence{});
    return keys;
}

/// The numbers of a list; empty for any other value, also if a number is no key.
std::optional<std::vector<std::int32_t>> readNumbers(const Json* list) {
    if (list == nullptr || !list->is_array()) {
        return std::nullopt;
    }
    std::vector<std::int32_t> numbers;
    for (const Json& each : *list) {
        if (!each.is_number_integer() || each.get<std::int64_t>() < std::numeric_limits<std::int32_t>::min() ||
            each.get<std::int64_t>() > std::numeric_limits<std::int32_t>::max()) {
            return std::nullopt;
        }
        numbers.push_back(each.get<std::int32_t>());
    }
    return numbers;
}

std::optional<KeySequences> readSequences(const Json* list) {
    if (list == nullptr || !list->is_array()) {
        return std::nullopt;
    }
    KeySequences sequences;
    for (const Json& each : *list) {
        const auto numbers = readNumbers(&each);
        KeySequence sequence{};
        if (!numbers || numbers->size() != sequence.size()) {
            return std::nullopt;
        }
        std::ranges::copy(*numbers, sequence.begin());
        sequences.push_back(sequence);
    }
    return sequences;
}

std::optional<KeyLoan> readLoan(const Json& object) {
    const auto keys = readSequences(member(object, "keys"));
    const auto borrowed = readNumbers(member(object, "borrowed"));
    KeyLoan loan{.holder = {.component = std::string(compositor::textOf(object, "component")),
                            .action = std::string(compositor::textOf(object, "action")),
                            .componentTitle = std::string(compositor::textOf(object, "componentTitle")),
                            .actionTitle = std::string(compositor::textOf(object, "actionTitle"))},
                 .keys = keys.value_or(KeySequences{}),
                 .borrowed = borrowed.value_or(std::vector<std::int32_t>{})};
    const bool isWhole =
        keys && borrowed && !borrowed->empty() && !loan.holder.component.empty() && !loan.holder.action.empty() &&
        std::ranges::all_of(*borrowed, [&](std::int32_t key) { return without(*keys, key).has_value(); });
    return isWhole ? std::optional(std::move(loan)) : std::nullopt;
}

} // namespace

KeySequences KeyLoan::remainder() const {
    KeySequences left = keys;
    std::erase_if(left, [&](const KeySequence& each) { return isBorrowedSequence(each, borrowed); });
    return left;
}

bool KeyLoan::accountsFor(const KeySequences& present) const {
    KeySequences missing = withoutEmpty(keys);
    for (const KeySequence& each : withoutEmpty(present)) {
        const auto known = std::ranges::find(missing, each);
        if (known == missing.end()) {
            return false;
        }
        missing.erase(known);
    }
    return std::ranges::all_of(missing, [&](const KeySequence& each) { return isBorrowedSequence(each, borrowed); });
}

std::optional<KeyLoanNote> KeyLoanNote::read(std::string_view text) {
    const auto document = compositor::parsedJson(text);
    const Json* loans = document ? member(*document, "loans") : nullptr;
    const auto left = document ? readNumbers(member(*document, "left")) : std::nullopt;
    if (loans == nullptr || !loans->is_array() || !left) {
        return std::nullopt;
    }
    KeyLoanNote note{.loans = {}, .left = *left};
    for (const Json& each : *loans) {
        auto loan = readLoan(each);
        if (!loan) {
            return std::nullopt;
        }
        note.loans.push_back(*std::move(loan));
    }
    return note;
}

std::string KeyLoanNote::text() const {
    Json list = Json::array();
    for (const KeyLoan& loan : loans) {
        list.push_back({{"component", loan.holder.component},
                        {"action", loan.holder.action},
                        {"componentTitle", loan.holder.componentTitle},
                        {"actionTitle", loan.holder.actionTitle},
                        {"keys", loan.keys},
                        {"borrowed", loan.borrowed}});
    }
    return Json{{"loans", list}, {"left", left}}.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<KeySequences> without(const KeySequences& keys, std::int32_t key) {
    KeySequences others = keys;
    return std::erase(others, sequenceOf(key)) > 0 ? std::optional(std::move(others)) : std::nullopt;
}

} // namespace platform::kwin
