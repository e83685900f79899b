#!/usr/bin/python3
"""The pictures are equal, byte for byte, for every user and with any settings of that user."""

import unittest

from drawing import draw
from picture_case import PictureCase

FONT_SETTINGS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>false</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintfull</const></edit>
    <edit name="rgba" mode="assign"><const>bgr</const></edit>
    <edit name="embolden" mode="assign"><bool>true</bool></edit>
  </match>
  <match target="pattern">
    <edit name="family" mode="assign" binding="strong"><string>DejaVu Serif</string></edit>
    <edit name="antialias" mode="assign"><bool>false</bool></edit>
  </match>
</fontconfig>
"""


class SamePictures(PictureCase):
    def test_the_bytes_are_the_same_for_every_user(self):
        draw(self.shots)
        expected = self.digests()
        self.assertEqual(len(expected), 4)
        fonts = self.home / ".config/fontconfig/fonts.conf"
        fonts.parent.mkdir(parents=True)
        fonts.write_text(FONT_SETTINGS, encoding="ascii")
        (self.home / ".fonts.conf").write_text(FONT_SETTINGS, encoding="ascii")
        oddities = [
            {},
            {"LANG": "en_US.UTF-8"}, {"LANG": "en_GB.utf8"}, {"LC_ALL": "C"}, {"LC_ALL": "POSIX", "LANGUAGE": "en"},
            {"LANG": "de_DE.UTF-8", "LANGUAGE": "en"}, {"LC_NUMERIC": "de_DE.UTF-8"},
            {"FONTCONFIG_FILE": str(fonts)}, {"XDG_CONFIG_HOME": str(self.home / ".config")},
            {"FREETYPE_PROPERTIES": "cff:no-stem-darkening=0"},
            {"QT_SCALE_FACTOR": "3", "QT_FONT_DPI": "200", "QT_USE_PHYSICAL_DPI": "1"},
            {"QT_SCREEN_SCALE_FACTORS": "1.5", "QT_ENABLE_HIGHDPI_SCALING": "0"},
            {"QT_QPA_PLATFORMTHEME": "gtk3", "QT_STYLE_OVERRIDE": "windows", "QT_QPA_PLATFORM": "xcb"},
            {"QT_QUICK_BACKEND": "rhi", "QSG_RHI_BACKEND": "opengl", "QSG_VISUALIZE": "overdraw"},
            {"QT_LOGGING_RULES": "*=true", "QT_DEBUG_PLUGINS": "1", "QML_IMPORT_TRACE": "1"},
            {"QT_IM_MODULE": "ibus", "QT_ACCESSIBILITY": "1", "QT_LAYOUT_DIRECTION": "rtl"},
            {"DISPLAY": ":987", "WAYLAND_DISPLAY": "wayland-987", "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"},
            {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "GTK_THEME": "Adwaita:dark"},
            {"HOME": "/nonexistent"}, {"HOME": ""}, {"XDG_RUNTIME_DIR": "/nonexistent"}, {"TZ": "Asia/Tokyo"},
        ]
        for oddity in oddities:
            with self.subTest(oddity=oddity):
                for file in self.shots.iterdir():
                    file.unlink()
                self.assert_silent_success(self.run_program("--snapshot", self.shots, **oddity))
                self.assertEqual(self.digests(), expected)

    def test_a_name_is_sorted_alike_whatever_the_locale_is_called(self):
        draw(self.shots, LANGUAGE="fr")
        expected = self.digests()
        for lang in ("fr_FR.UTF-8", "fr_FR.utf8", "fr_CA", "fr"):
            draw(self.shots, LANG=lang, LANGUAGE="fr")
            self.assertEqual(self.digests(), expected, lang)


if __name__ == "__main__":
    unittest.main()
