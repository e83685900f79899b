#include "Tessel/AccessText.h"

#include <gtest/gtest.h>

#include <string>

namespace tessel {
namespace {

using platform::AccessObstacle;
using ObstacleKind = AccessObstacle::Kind;

TEST(AccessText, NamesWhatIsMissingAndWhatTheUserCanDo) {
    struct Row {
        AccessObstacle obstacle;
        std::string text;
        const char* variant;
    };

    for (const Row& row : {
             Row{{.kind = ObstacleKind::windowManager}, "no window manager here moves windows on request", "X11"},
             Row{{.kind = ObstacleKind::silentWindowManager, .desktop = "i3"},
                 "i3 does not answer at its socket",
                 "X11"},
             Row{{.kind = ObstacleKind::silentCompositor, .desktop = "sway"}, "sway does not answer", "compositor"},
             Row{{.kind = ObstacleKind::scriptNotRunning, .desktop = "KWin"},
                 "KWin does not answer, or does not run scripts",
                 "compositor"},
             Row{{.kind = ObstacleKind::extensionOff, .desktop = "GNOME Shell"},
                 "the extension Tessel of GNOME Shell is switched off; switch it on in the application Extensions",
                 "extension-off"},
             Row{{.kind = ObstacleKind::extensionNotLoaded, .desktop = "GNOME Shell"},
                 "GNOME Shell has not loaded its extension Tessel yet; log out and in once",
                 "extension-login"},
             Row{{.kind = ObstacleKind::extensionRefused, .desktop = "GNOME Shell"},
                 "GNOME Shell does not run its extension Tessel; the application Extensions says why",
                 "extension-refused"},
             Row{{.kind = ObstacleKind::extensionUnfit, .desktop = "GNOME Shell 60.1", .detail = "Meta.Window"},
                 "the extension Tessel does not fit GNOME Shell 60.1, which lacks Meta.Window",
                 "extension-refused"},
             Row{{.kind = ObstacleKind::codeRefused, .desktop = "Cinnamon", .detail = "Eval is closed"},
                 "Cinnamon does not run Tessel's code, which it needs to move windows: Eval is closed",
                 "code-refused"},
             Row{{.kind = ObstacleKind::busNameTaken, .detail = "org.example.Name"},
                 "another program has Tessel's name on the message bus (org.example.Name)",
                 "compositor"},
             Row{{.kind = ObstacleKind::pluginsMissing,
                  .desktop = "Wayfire",
                  .detail = "ipc ipc-rules",
                  .file = "/home/u/.config/wayfire.ini"},
                 "Wayfire lacks plugins that Tessel needs; add “ipc ipc-rules” to the line “plugins” in the section "
                 "“core” of /home/u/.config/wayfire.ini",
                 "plugins-missing"},
             Row{{.kind = ObstacleKind::unknownCompositor},
                 "this Wayland compositor has no way for Tessel to move windows; X11, Plasma, GNOME, Cinnamon, sway "
                 "and "
                 "Wayfire have one",
                 "unsupported"},
         }) {
        EXPECT_EQ(accessText(row.obstacle), row.text);
        EXPECT_STREQ(accessVariant(row.obstacle), row.variant) << row.text;
    }
    EXPECT_EQ(accessVariant({.kind = ObstacleKind::permission}), nullptr) << "the card's own text";
}

} // namespace
} // namespace tessel
