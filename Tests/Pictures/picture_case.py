"""A test that draws pictures in a folder of its own."""

import hashlib
import subprocess
import tempfile
import unittest
from pathlib import Path

from drawing import PROGRAM, bare_environment


class PictureCase(unittest.TestCase):
    def setUp(self) -> None:
        # Everything made here is removed with the test.
        self._folder = tempfile.TemporaryDirectory()
        self.addCleanup(self._folder.cleanup)
        self.folder = Path(self._folder.name)
        self.shots = self.folder / "shots"
        self.shots.mkdir()
        self.home = self.folder / "home"
        self.home.mkdir()

    def run_program(self, *arguments: str | Path, program: Path = PROGRAM, **variables: str):
        return subprocess.run([program, *arguments], env=bare_environment(self.home) | variables, cwd=self.folder,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=False)

    def assert_silent_success(self, finished: subprocess.CompletedProcess) -> None:
        self.assertEqual((finished.returncode, finished.stdout, finished.stderr), (0, b"", b""))

    def digests(self) -> dict[str, str]:
        return {file.name: hashlib.sha256(file.read_bytes()).hexdigest() for file in self.shots.iterdir()}
