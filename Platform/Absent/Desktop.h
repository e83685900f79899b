#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/AccessibilityObserver.h"
#include "Platform/Seam/Desktop/Beep.h"
#include "Platform/Seam/Desktop/DesktopParts.h"
#include "Platform/Seam/Desktop/HotKeyEvents.h"
#include "Platform/Seam/Desktop/NotificationCenter.h"
#include "Platform/Seam/Desktop/OwnWindows.h"
#include "Platform/Seam/Desktop/RunningApplications.h"
#include "Platform/Seam/Desktop/Screens.h"
#include "Platform/Seam/Desktop/StatusItem.h"
#include "Platform/Seam/Desktop/Workspace.h"

#include <memory>
#include <optional>
#include <string>

/// A desktop that is not there: nothing runs, nothing is shown, and every request is refused. With it, no caller has to
/// check first whether there is a desktop.
namespace platform::absent {

class Accessibility final : public platform::Accessibility {
public:
    [[nodiscard]] AXUIElement applicationElement(ProcessIdentifier process) override;

    [[nodiscard]] std::expected<AXValue, AXError> copyAttributeValue(const AXUIElement& /*element*/,
                                                                     std::string_view /*attribute*/) override {
        return std::unexpected(AXError::apiDisabled);
    }

    AXError setAttributeValue(const AXUIElement& /*element*/, std::string_view /*attribute*/,
                              const AXValue& /*value*/) override {
        return AXError::apiDisabled;
    }

    [[nodiscard]] std::expected<ProcessIdentifier, AXError> processIdentifier(const AXUIElement& /*element*/) override {
        return std::unexpected(AXError::apiDisabled);
    }

    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGPoint point) override { return point; }

    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGSize size) override { return size; }

    [[nodiscard]] std::optional<AccessObstacle> obstacle() const override {
        return AccessObstacle{.kind = AccessObstacle::Kind::unknownCompositor};
    }

    bool isProcessTrustedWithPrompt() override { return false; }
};

class AccessibilityObservers final : public platform::AccessibilityObservers {
public:
    [[nodiscard]] std::expected<std::unique_ptr<AXObserver>, AXError>
    createObserver(ProcessIdentifier /*process*/, AXObserverCallback /*callback*/) override {
        return std::unexpected(AXError::apiDisabled);
    }
};

class Beep final : public platform::Beep {
public:
    void beep() override {}
};

class HotKeyEvents final : public platform::HotKeyEvents {
public:
    OSStatus installHandler(HotKeyEventHandler /*handler*/, void* /*userData*/) override { return noErr; }

    [[nodiscard]] Registration registerHotKey(std::uint32_t /*keyCode*/, std::uint32_t /*modifiers*/,
                                              EventHotKeyID /*name*/) override {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }

    void unregisterHotKey(EventHotKeyRef /*reference*/) override {}
};

/// Windows that stand where the desktop puts them, because there is no way to place them.
class OwnWindows final : public platform::OwnWindows {
public:
    [[nodiscard]] Protocol protocol() const override { return Protocol::wayland; }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override { return std::nullopt; }

    void place(Number /*window*/, const std::string& /*title*/, corvid::CGPoint /*topLeft*/) override {}

    void takeKeyboard(Number /*window*/) override {}

    [[nodiscard]] bool hasKeyboard(Number /*window*/) override { return false; }

    [[nodiscard]] bool areBlended() override { return true; }
};

class RunningApplications final : public platform::RunningApplications {
public:
    [[nodiscard]] std::vector<RunningApplicationReference> runningApplications() override { return {}; }

    [[nodiscard]] RunningApplicationReference runningApplication(ProcessIdentifier /*process*/) override {
        return nullptr;
    }

    [[nodiscard]] std::shared_ptr<NotificationCenter> notificationCenter() override { return center; }

private:
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
};

class Screens final : public platform::Screens {
public:
    [[nodiscard]] std::vector<Screen> screens() override { return {}; }
};

class StatusItem final : public platform::StatusItem {
public:
    [[nodiscard]] bool isShown() const override { return false; }

    [[nodiscard]] std::optional<corvid::CGRect> frame() const override { return std::nullopt; }

    void setImage(const Image& /*image*/) override {}

    void setTitle(std::string_view /*title*/) override {}

    void setToolTip(std::string_view /*text*/) override {}

    void setAction(Action /*action*/) override {}

    void setMenu(std::vector<StatusMenuLine> /*lines*/) override {}
};

class StatusBar final : public platform::StatusBar {
public:
    [[nodiscard]] std::optional<Image> symbolImage(std::string_view /*name*/,
                                                   std::string_view /*accessibilityDescription*/) const override {
        return std::nullopt;
    }

    [[nodiscard]] std::unique_ptr<platform::StatusItem> createStatusItem(std::string_view /*autosaveName*/) override {
        return std::make_unique<StatusItem>();
    }
};

class Workspace final : public platform::Workspace {
public:
    [[nodiscard]] std::optional<ProcessIdentifier> frontmostApplication() override { return std::nullopt; }
};

class Desktop {
public:
    Accessibility accessibility;
    AccessibilityObservers accessibilityObservers;
    Beep sound;
    HotKeyEvents hotKeyEvents;
    OwnWindows ownWindows;
    RunningApplications runningApplications;
    Screens screens;
    StatusBar statusBar;
    Workspace workspace;

    [[nodiscard]] DesktopParts parts() {
        return {.accessibility = accessibility,
                .accessibilityObservers = accessibilityObservers,
                .sound = sound,
                .hotKeyEvents = hotKeyEvents,
                .ownWindows = ownWindows,
                .runningApplications = runningApplications,
                .screens = screens,
                .shortcutHolders = nullptr,
                .workspace = workspace};
    }
};

} // namespace platform::absent
