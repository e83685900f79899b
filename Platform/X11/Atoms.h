#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace platform::x11 {

/// The atoms in use, in the order of `atomNames`.
enum class Atom : std::uint8_t {
    gtkApplicationId,
    gtkFrameExtents,
    i3SocketPath,
    kdeNetWmDesktopFile,
    manager,
    netActiveWindow,
    netClientList,
    netCurrentDesktop,
    netFrameExtents,
    netMoveResizeWindow,
    netSupported,
    netSupportingWmCheck,
    netSystemTrayColors,
    netSystemTrayOpcode,
    netSystemTrayVisual,
    netWmDesktop,
    netWmName,
    netWmPid,
    netWmState,
    netWmStateFullscreen,
    netWmStateMaximizedHorz,
    netWmStateMaximizedVert,
    netWmStateSkipTaskbar,
    netWmStrut,
    netWmStrutPartial,
    netWmWindowType,
    netWmWindowTypeCombo,
    netWmWindowTypeDesktop,
    netWmWindowTypeDialog,
    netWmWindowTypeDnd,
    netWmWindowTypeDock,
    netWmWindowTypeDropdownMenu,
    netWmWindowTypeMenu,
    netWmWindowTypeNormal,
    netWmWindowTypeNotification,
    netWmWindowTypePopupMenu,
    netWmWindowTypeSplash,
    netWmWindowTypeToolbar,
    netWmWindowTypeTooltip,
    netWmWindowTypeUtility,
    netWorkarea,
    obConfigFile,
    utf8String,
    wmState,
    xembedInfo,
};

inline constexpr std::array<std::string_view, 45> atomNames{
    "_GTK_APPLICATION_ID",
    "_GTK_FRAME_EXTENTS",
    "I3_SOCKET_PATH",
    "_KDE_NET_WM_DESKTOP_FILE",
    "MANAGER",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CURRENT_DESKTOP",
    "_NET_FRAME_EXTENTS",
    "_NET_MOVERESIZE_WINDOW",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_SYSTEM_TRAY_COLORS",
    "_NET_SYSTEM_TRAY_OPCODE",
    "_NET_SYSTEM_TRAY_VISUAL",
    "_NET_WM_DESKTOP",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_MAXIMIZED_HORZ",
    "_NET_WM_STATE_MAXIMIZED_VERT",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WORKAREA",
    "_OB_CONFIG_FILE",
    "UTF8_STRING",
    "WM_STATE",
    "_XEMBED_INFO",
};

static_assert(atomNames.size() == static_cast<std::size_t>(Atom::xembedInfo) + 1);

/// The server's ids of the atoms, `XCB_ATOM_NONE` for one that could not be interned.
class AtomTable {
public:
    void set(Atom atom, xcb_atom_t number) { numbers[static_cast<std::size_t>(atom)] = number; }

    [[nodiscard]] xcb_atom_t operator[](Atom atom) const { return numbers[static_cast<std::size_t>(atom)]; }

private:
    std::array<xcb_atom_t, atomNames.size()> numbers{};
};

} // namespace platform::x11
