#!/usr/bin/python3
"""A case that failed or hung at first runs again, and leaves a record of that."""

import os
import socket
import sys
import tempfile
import unittest
from contextlib import redirect_stderr, redirect_stdout
from io import StringIO
from pathlib import Path
from unittest import mock

from harness.skipping import Skipped
from harness.trying import CANNOT_RUN, FAILED, LOG_LINES, PASSED, TRACE_LINES, try_case

NAME = "desktop.planted"


class SecondTries(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        # The first case that leaves a file creates the folder.
        self.folder = Path(folder.name, "second-tries")

    def status(self, failures: int, tries: int = 2) -> int:
        """The exit status and output of a case that fails that often before it passes."""
        attempts = []

        def planted() -> None:
            attempts.append(len(attempts) + 1)
            if len(attempts) <= failures:
                for line in range(100):
                    print(f"log {line} of try {len(attempts)}")
                print(f"complaint of try {len(attempts)}", file=sys.stderr)
                raise AssertionError(f"try {attempts[-1]} is to fail")

        variables = {"TESSEL_DESKTOP_TRIES": str(tries), "TESSEL_DESKTOP_SECOND_TRIES": str(self.folder)}
        self.printed, self.complaints = StringIO(), StringIO()
        with mock.patch.dict(os.environ, variables), redirect_stdout(self.printed), redirect_stderr(self.complaints):
            status = try_case(NAME, planted)
        self.assertEqual(len(attempts), min(failures + 1, tries))
        return status

    def traces(self) -> dict[str, str]:
        return {file.name: file.read_text() for file in self.folder.glob("*")}

    def test_a_case_that_passes_at_once_leaves_nothing(self):
        self.assertEqual(self.status(failures=0), PASSED)
        self.assertEqual(self.traces(), {})

    def test_a_case_that_passes_at_the_second_try_leaves_the_end_of_the_first_ones_output(self):
        self.assertEqual(self.status(failures=1), PASSED)
        self.assertEqual(list(self.traces()), [NAME])
        lines = self.traces()[NAME].splitlines()
        self.assertIn("AssertionError: try 1 is to fail", lines)
        self.assertIn("log 99 of try 1", lines)
        self.assertIn("complaint of try 1", lines)
        self.assertLessEqual(len(lines), TRACE_LINES + LOG_LINES)

    def test_a_case_that_fails_at_both_tries_fails_and_leaves_nothing(self):
        self.assertEqual(self.status(failures=2), FAILED)
        self.assertEqual(self.traces(), {})

    def test_without_a_second_try_a_failure_fails_and_leaves_nothing(self):
        self.assertEqual(self.status(failures=1, tries=1), FAILED)
        self.assertEqual(self.traces(), {})

    def test_both_tries_are_printed_as_a_whole(self):
        self.status(failures=1)
        self.assertIn("log 0 of try 1\n", self.printed.getvalue())
        self.assertIn(f"{NAME}: failed at try 1 of 2\n{NAME}: passed at try 2\n", self.printed.getvalue())
        self.assertIn("AssertionError: try 1 is to fail\n", self.complaints.getvalue())

    def test_a_case_that_cannot_run_is_not_tried_again(self):
        def planted() -> None:
            raise Skipped("there is nothing to run it with")

        with mock.patch.dict(os.environ, {"TESSEL_DESKTOP_TRIES": "2"}), redirect_stdout(StringIO()):
            self.assertEqual(try_case(NAME, planted), CANNOT_RUN)

    def test_a_case_that_hangs_at_first_is_interrupted_and_runs_again(self):
        attempts = []
        ours, silent = socket.socketpair()
        self.addCleanup(ours.close)
        self.addCleanup(silent.close)

        def planted() -> None:
            attempts.append(len(attempts) + 1)
            if len(attempts) == 1:
                # Like a call to a server that hangs.
                ours.recv(1)

        variables = {
            "TESSEL_DESKTOP_TRIES": "2", "TESSEL_DESKTOP_SECONDS": "0.05",
            "TESSEL_DESKTOP_SECOND_TRIES": str(self.folder),
        }
        with mock.patch.dict(os.environ, variables), redirect_stdout(StringIO()), redirect_stderr(StringIO()):
            self.assertEqual(try_case(NAME, planted), PASSED)
        self.assertEqual(attempts, [1, 2])
        self.assertIn("the case did not end within 0.05 s", self.traces()[NAME])


if __name__ == "__main__":
    unittest.main()
