#!/usr/bin/python3
"""The check of the symbols finds each fault: every case plants one."""

import tempfile
import unittest
from pathlib import Path

from symbols import drawing_faults, faults

PATH = '<path fill="#000" d="M2 2h20v20H2z"/>'


def drawing(body: str, box: str = "0 0 24 24") -> str:
    return f'<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="{box}">{body}</svg>'


class Symbols(unittest.TestCase):
    def found(self, source: str, path: str = "Tessel/Menu.cpp") -> list[str]:
        with tempfile.TemporaryDirectory() as root:
            for name, text in {path: source, "Resources/symbols/plus.svg": drawing(PATH),
                               "Resources/symbols/rectangle.inset.filled.svg": drawing(PATH)}.items():
                file = Path(root, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            return faults(Path(root))

    def test_a_name_without_a_drawing_is_found(self):
        for source in ['return "rectangle.round";', '.symbol = "circle.dashed",', 'Symbol { name: "minus" }']:
            self.assertEqual(len(self.found(source)), 1, source)
        self.assertEqual(self.found('return "rectangle.inset.filled";\n// symbol\n"plus"'), [])
        self.assertEqual(self.found('symbol: open ? "plus" : "rectangle.inset.filled"', "Tessel/Menu/Row.qml"), [])

    def test_sources_without_any_symbol_are_not_taken_for_sound(self):
        self.assertEqual(len(self.found('return "org.corvid.tessel";')), 1)

    def test_only_plain_black_paths_are_drawings(self):
        self.assertEqual(drawing_faults(drawing(PATH)), [])
        self.assertEqual(drawing_faults(drawing('<path fill="#000" opacity=".4" d="M1 1h2v2z"/>')), [])
        for body in ['<circle r="3"/>', '<path fill="red" d="M0 0h1"/>', '<path d=""/>', "", "<text>W</text>",
                     '<path d="M0 0" mask="a"/>', '<g transform="scale(2)"><path d="M0 0h1"/></g>',
                     '<path d="M0 0" filter="b"/>']:
            self.assertNotEqual(drawing_faults(drawing(body)), [], body)
        self.assertNotEqual(drawing_faults(drawing(PATH, box="0 0 16 16")), [])
        self.assertNotEqual(drawing_faults("<svg>"), [])


if __name__ == "__main__":
    unittest.main()
