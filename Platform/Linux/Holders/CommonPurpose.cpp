#include "Platform/Linux/Holders/CommonPurpose.h"

#include <algorithm>
#include <array>

namespace platform::linux {

namespace {

struct Binding {
    /// The beginning of the group.
    std::string_view group;
    std::string_view name;
    KeyPurpose purpose;
};

// The first one that fits counts: Cinnamon calls two views of its own by the names of workspaces that lie above and
// below (cinnamon-settings, KeybindingTable.py).
constexpr std::array bindings{
    Binding{"org.cinnamon.", "switch-to-workspace-up", KeyPurpose::allWorkspaces},
    Binding{"org.cinnamon.", "switch-to-workspace-down", KeyPurpose::allWindows},
    Binding{"org.", "switch-to-workspace-left", KeyPurpose::workspaceOnTheLeft},
    Binding{"org.", "switch-to-workspace-right", KeyPurpose::workspaceOnTheRight},
    Binding{"org.", "switch-to-workspace-up", KeyPurpose::workspaceAbove},
    Binding{"org.", "switch-to-workspace-down", KeyPurpose::workspaceBelow},
    Binding{"org.", "show-desktop", KeyPurpose::showDesktop},
    Binding{"xfwm4", "left_workspace_key", KeyPurpose::workspaceOnTheLeft},
    Binding{"xfwm4", "right_workspace_key", KeyPurpose::workspaceOnTheRight},
    Binding{"xfwm4", "up_workspace_key", KeyPurpose::workspaceAbove},
    Binding{"xfwm4", "down_workspace_key", KeyPurpose::workspaceBelow},
    Binding{"xfwm4", "show_desktop_key", KeyPurpose::showDesktop},
    Binding{"wayfire", "vswitch/binding_left", KeyPurpose::workspaceOnTheLeft},
    Binding{"wayfire", "vswitch/binding_right", KeyPurpose::workspaceOnTheRight},
    Binding{"wayfire", "vswitch/binding_up", KeyPurpose::workspaceAbove},
    Binding{"wayfire", "vswitch/binding_down", KeyPurpose::workspaceBelow},
    Binding{"wayfire", "expo/toggle", KeyPurpose::allWorkspaces},
    Binding{"wayfire", "scale/toggle", KeyPurpose::allWindows},
    Binding{"wayfire", "wm-actions/toggle_showdesktop", KeyPurpose::showDesktop},
    Binding{"openbox", "GoToDesktop left", KeyPurpose::workspaceOnTheLeft},
    Binding{"openbox", "GoToDesktop right", KeyPurpose::workspaceOnTheRight},
    Binding{"openbox", "GoToDesktop up", KeyPurpose::workspaceAbove},
    Binding{"openbox", "GoToDesktop down", KeyPurpose::workspaceBelow},
    Binding{"openbox", "ToggleShowDesktop", KeyPurpose::showDesktop},
};

} // namespace

std::optional<KeyPurpose> commonPurpose(std::string_view group, std::string_view name) {
    const auto found = std::ranges::find_if(
        bindings, [&](const Binding& each) { return group.starts_with(each.group) && name == each.name; });
    return found == bindings.end() ? std::nullopt : std::optional(found->purpose);
}

} // namespace platform::linux
