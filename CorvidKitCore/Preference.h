#pragma once

#include "CorvidKitCore/PreferenceValue.h"

#include <string>

namespace corvid {

/// A setting: the key under which a store keeps it, and what it is worth while the store has nothing that reads as its
/// type. Known to the store by its key alone.
template <PreferenceValue PreferredValue>
struct Preference {
    using Value = PreferredValue;

    std::string key;
    Value defaultValue;
};

} // namespace corvid
