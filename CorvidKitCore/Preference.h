#pragma once

#include "CorvidKitCore/PreferenceValue.h"

#include <string>

namespace corvid {

/// A setting: its key in a store, and its value while the store has no value of its type. The store knows it by its key
/// alone.
template <PreferenceValue PreferredValue>
struct Preference {
    using Value = PreferredValue;

    std::string key;
    Value defaultValue;
};

} // namespace corvid
