#pragma once

#include <cstdint>

/// An app rule: an application's identifier and an action out of `WindowAction::ruleActions`, applied to the
/// application's first window on the screen that it opens on.
namespace tessel::AppRule {

/// Whether a rule may act, given how many standard windows the application has when one has just appeared: only when
/// that one is alone (or not yet counted).
[[nodiscard]] constexpr bool applies(std::int64_t standardWindowCount) {
    return standardWindowCount < 2;
}

} // namespace tessel::AppRule
