#!/usr/bin/python3
"""The check of the walls finds each fault: every case plants a source in an empty tree."""

import tempfile
import unittest
from pathlib import Path

from include_walls import breaches


class IncludeWalls(unittest.TestCase):
    def found(self, path: str, text: str) -> list[str]:
        with tempfile.TemporaryDirectory() as root:
            file = Path(root, path)
            file.parent.mkdir(parents=True)
            file.write_text(text, encoding="utf-8")
            return breaches(Path(root))

    def assert_broken(self, path: str, include: str) -> None:
        found = self.found(path, f"#pragma once\n\n#include {include}\n")
        self.assertEqual(len(found), 1, f"{path} including {include} went unseen")
        self.assertTrue(found[0].startswith(f"{path}:3: includes {include[1:-1]}; "), found[0])

    def assert_sound(self, path: str, include: str) -> None:
        self.assertEqual(self.found(path, f"#include {include}\n"), [])

    def test_each_folder_keeps_to_what_lies_below_it(self):
        self.assert_broken("CorvidKitCore/Shortcut.h", '"TesselCore/WindowAction.h"')
        self.assert_broken("TesselCore/WindowLayout.cpp", '"Platform/Seam/Desktop/Screens.h"')
        self.assert_broken("Platform/Seam/Desktop/Screens.h", '"CorvidKit/HotKeys.h"')
        self.assert_broken("CorvidKit/HotKeys.cpp", '"TesselCore/WindowAction.h"')
        self.assert_sound("TesselCore/WindowLayout.cpp", '"CorvidKitCore/Geometry.h"')
        self.assert_sound("CorvidKit/HotKeys.cpp", '"Platform/Seam/Desktop/HotKeyEvents.h"')
        self.assert_sound("Tessel/WindowMover.cpp", '"TesselCore/WindowLayout.h"')

    def test_a_desktop_never_knows_the_logic(self):
        for desktop in ("Simulated", "Linux", "X11", "Another"):
            self.assert_broken(f"Platform/{desktop}/Windows.cpp", '"Tessel/WindowMover.h"')
            self.assert_broken(f"Platform/{desktop}/Windows.cpp", '"TesselCore/WindowLayout.h"')
            self.assert_broken(f"Platform/{desktop}/Windows.cpp", '"CorvidKit/HotKeys.h"')
            self.assert_sound(f"Platform/{desktop}/Windows.cpp", '"Platform/Seam/Desktop/Screens.h"')

    def test_the_logic_never_knows_a_desktop(self):
        self.assert_broken("Tessel/WindowMover.cpp", '"Platform/X11/Connection.h"')
        self.assert_broken("CorvidKit/HotKeys.cpp", '"Platform/Simulated/Desktop.h"')
        self.assert_broken("Platform/Seam/Platform.cpp", '"Platform/X11/Connection.h"')
        self.assert_sound("Tessel/main.cpp", '"Platform/X11/Connection.h"')

    def test_libraries_stay_in_the_folder_that_wraps_them(self):
        self.assert_broken("Tessel/main.cpp", "<xcb/xcb.h>")
        self.assert_broken("CorvidKit/MainLoop.cpp", "<systemd/sd-event.h>")
        self.assert_broken("Platform/Simulated/Desktop.cpp", "<unistd.h>")
        self.assert_broken("Platform/X11/Connection.cpp", "<systemd/sd-event.h>")
        self.assert_broken("Platform/Linux/Loop/MainLoop.cpp", "<xcb/xcb.h>")
        self.assert_sound("Platform/X11/Connection.cpp", "<xcb/randr.h>")
        self.assert_sound("Platform/Linux/Loop/MainLoop.cpp", "<sys/timerfd.h>")
        self.assert_sound("CorvidKitCore/Geometry.h", "<vector>")

    def test_spelling_does_not_hide_an_include(self):
        for line in ('#include"Tessel/WindowMover.h"', '  #  include "Tessel/WindowMover.h"  // why'):
            self.assertEqual(len(self.found("CorvidKit/HotKeys.cpp", line)), 1, line)

    def test_a_new_folder_needs_a_wall(self):
        self.assertEqual(len(self.found("Extras/Shiny.cpp", "")), 1)
        self.assertEqual(self.found("Tests/Extras/ShinyTests.cpp", '#include "Tessel/WindowMover.h"\n'), [])


if __name__ == "__main__":
    unittest.main()
