#include "Platform/KWin/QtKeys.h"

#include "CorvidKitCore/Keys.h"

namespace platform::kwin {

std::optional<std::int32_t> qtKey(std::uint32_t keyCode, std::uint32_t modifiers) {
    const corvid::Key* key = corvid::keyOf(keyCode);
    if (key == nullptr || corvid::hasUnknownModifier(modifiers)) {
        return std::nullopt;
    }
    std::int32_t combined = key->qtKey;
    for (const corvid::Modifier& each : corvid::modifiersIn(modifiers)) {
        combined |= each.qtModifier;
    }
    return combined;
}

} // namespace platform::kwin
