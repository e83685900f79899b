#pragma once

#include "CorvidKitCore/PreferenceStore.h"

#include <optional>
#include <string_view>

namespace corvid {

/// A store that lives and dies with the process, for previews, pictures and tests. One thread at a time.
class InMemoryPreferenceStore final : public PreferenceStore {
public:
    explicit InMemoryPreferenceStore(PropertyListValue::Dictionary values = {});

    [[nodiscard]] std::optional<PropertyListValue> object(std::string_view key) const override;
    void set(std::optional<PropertyListValue> value, std::string_view key) override;

    PropertyListValue::Dictionary values;
};

} // namespace corvid
