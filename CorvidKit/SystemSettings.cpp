#include "CorvidKit/SystemSettings.h"

#include "CorvidKitCore/Address.h"
#include "Platform/Seam/Desktop/AddressOpener.h"
#include "Platform/Seam/Platform.h"

#include <array>
#include <span>
#include <string_view>

namespace corvid::SystemSettings {

namespace {

/// The pages that may be the pane, the likeliest first. A desktop's opener knows these names and shows its nearest
/// page.
std::span<const std::string_view> candidates(Pane pane) {
    static constexpr std::array<std::string_view, 1> accessibility{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"};
    static constexpr std::array<std::string_view, 1> automation{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"};
    static constexpr std::array<std::string_view, 1> screenRecording{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture"};
    static constexpr std::array<std::string_view, 2> keyboardShortcuts{
        "x-apple.systempreferences:com.apple.Keyboard-Settings.extension?Shortcuts",
        "x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts"};
    switch (pane) {
    case Pane::accessibility:
        return accessibility;
    case Pane::automation:
        return automation;
    case Pane::screenRecording:
        return screenRecording;
    case Pane::keyboardShortcuts:
        return keyboardShortcuts;
    }
    return {};
}

} // namespace

void open(Pane pane) {
    for (const std::string_view candidate : candidates(pane)) {
        if (isAddress(candidate) && platform::current().addressOpener.open(candidate)) {
            return;
        }
    }
}

} // namespace corvid::SystemSettings
