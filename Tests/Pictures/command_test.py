#!/usr/bin/python3
"""The effects of the command that draws pictures, also with missing requirements."""

import os
import shutil
import signal
import subprocess
import unittest
from pathlib import Path

from PIL import Image

from drawing import PROGRAM, bare_environment, draw, names
from picture_case import PictureCase

LANGUAGES = ("en", "de", "fr", "es", "it", "pt_BR", "ja", "ko", "zh_CN")


class AskingForPictures(PictureCase):
    def test_four_files_are_written_in_order(self):
        self.assert_silent_success(self.run_program("--snapshot", self.shots))
        files = sorted(self.shots.iterdir(), key=lambda file: file.stat().st_mtime_ns)
        self.assertEqual([file.name for file in files], names())
        times = [file.stat().st_mtime_ns for file in files]
        self.assertEqual(len(set(times)), len(times), "the order cannot be determined")
        for file in files:
            with Image.open(file) as picture:
                self.assertEqual(picture.format, "PNG")

    def test_nothing_else_is_made_or_changed(self):
        settings = self.home / ".config/tessel/preferences.plist"
        settings.parent.mkdir(parents=True)
        settings.write_text("not settings at all", encoding="ascii")
        before = settings.stat()
        self.assert_silent_success(self.run_program("--snapshot", self.shots))
        after = settings.stat()
        self.assertEqual((before.st_atime_ns, before.st_mtime_ns), (after.st_atime_ns, after.st_mtime_ns))
        self.assertEqual([path.relative_to(self.home).as_posix() for path in sorted(self.home.rglob("*"))],
                         [".config", ".config/tessel", ".config/tessel/preferences.plist"])
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["home", "shots"])

    def test_every_language_has_pictures_of_its_own(self):
        seen = {}
        for language in LANGUAGES:
            draw(self.shots, LANGUAGE=language)
            for name in names(language):
                contents = (self.shots / name).read_bytes()
                self.assertNotIn(contents, seen, f"{name} is the same as {seen.get(contents)}")
                seen[contents] = name
                with Image.open(self.shots / name) as picture:
                    self.assertEqual(picture.width, 680)
        self.assertEqual(len(self.digests()), 4 * len(LANGUAGES))

    def test_a_language_that_the_program_does_not_speak_gives_the_next_or_english(self):
        self.run_program("--snapshot", self.shots, LANGUAGE="tlh:nl:it")
        self.assertEqual(sorted(self.digests()), sorted(names("it")))
        self.run_program("--snapshot", self.shots, LANGUAGE="tlh")
        self.assertEqual(sorted(self.digests()), sorted(names("it") + names("en")))

    def test_a_picture_that_cannot_be_written_is_left_out_silently(self):
        missing = self.folder / "missing"
        self.assert_silent_success(self.run_program("--snapshot", missing))
        self.assertFalse(missing.exists())
        file = self.folder / "file"
        file.write_bytes(b"")
        for unfit in (file, "/dev/null", "/proc", "", "--help"):
            self.assert_silent_success(self.run_program("--snapshot", unfit, "--status"))
        self.assertEqual(file.read_bytes(), b"")

    def test_one_file_that_cannot_be_written_does_not_keep_the_others_away(self):
        (self.shots / names()[0]).mkdir()
        self.assert_silent_success(self.run_program("--snapshot", self.shots))
        self.assertEqual(sorted(file.name for file in self.shots.iterdir()), sorted(names()))
        self.assertTrue(all(file.is_file() for file in self.shots.iterdir() if file.name != names()[0]))

    def test_a_closed_standard_output_and_error_are_no_trouble(self):
        command = f'exec "{PROGRAM}" --snapshot "{self.shots}" <&- >&- 2>&-'
        finished = subprocess.run(["/bin/sh", "-c", command], env=bare_environment(self.home), timeout=120, check=False)
        self.assertEqual(finished.returncode, 0)
        self.assertEqual(sorted(self.digests()), sorted(names()))
        for file in self.shots.iterdir():
            self.assertTrue(file.read_bytes().startswith(b"\x89PNG"))

    def test_without_the_interface_there_are_no_pictures_and_no_complaint(self):
        alone = self.folder / "tessel"
        shutil.copy2(PROGRAM, alone)
        self.assert_silent_success(self.run_program("--snapshot", self.shots, program=alone))
        self.assertEqual(self.digests(), {})

    def test_a_qt_that_gives_up_is_no_complaint_either(self):
        # Qt reads this file beside the program, finds no platform, and aborts the process.
        (self.folder / "qt.conf").write_text("[Paths]\nPlugins=/nowhere\n", encoding="ascii")
        for name in (PROGRAM.name, "tessel-menu.so"):
            shutil.copy2(PROGRAM.parent / name, self.folder)
        self.assert_silent_success(self.run_program("--snapshot", self.shots, program=self.folder / PROGRAM.name))
        self.assertEqual(self.digests(), {})

    def test_a_picture_that_gives_up_while_it_is_drawn_costs_no_other(self):
        with subprocess.Popen([PROGRAM, "--snapshot", self.shots], env=bare_environment(self.home),
                              stdin=subprocess.DEVNULL) as drawing:
            children = Path(f"/proc/{drawing.pid}/task/{drawing.pid}/children")
            first = self.shots / names()[0]
            while not first.exists():
                self.assertIsNone(drawing.poll(), "ended before the first picture was there")
            drawer = int(children.read_text(encoding="ascii"))
            os.kill(drawer, signal.SIGABRT)
            self.assertEqual(drawing.wait(timeout=120), 0)
        whole = [name for name in names() if (self.shots / name).exists() and (self.shots / name).stat().st_size > 0]
        # Whichever picture it was drawing.
        self.assertGreaterEqual(len(whole), 3, whole)
        self.assertIn(names()[-1], whole)

    def test_the_first_of_two_directories_is_taken(self):
        other = self.folder / "other"
        other.mkdir()
        self.assert_silent_success(self.run_program("--snapshot", self.shots, "--snapshot", other))
        self.assertEqual(sorted(self.digests()), sorted(names()))
        self.assertEqual(list(other.iterdir()), [])

    def test_without_a_directory_the_program_starts_as_ever(self):
        finished = self.run_program("--snapshot")
        plain = self.run_program()
        self.assertEqual(plain.returncode, 1, "there is no display")
        self.assertEqual((finished.returncode, finished.stdout, finished.stderr),
                         (plain.returncode, plain.stdout, plain.stderr))


if __name__ == "__main__":
    unittest.main()
