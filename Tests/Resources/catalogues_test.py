#!/usr/bin/python3
"""The check of the catalogues finds each fault: every case plants one."""

import tempfile
import unittest
from pathlib import Path

from catalogues import faults


def message(source: str, translation: str, comment: str = "") -> str:
    note = f"<comment>{comment}</comment>" if comment else ""
    return f"<message><source>{source}</source>{note}<translation>{translation}</translation></message>"


def counted(source: str, *forms: str) -> str:
    forms = "".join(f"<numerusform>{form}</numerusform>" for form in forms)
    return f'<message numerus="yes"><source>{source}</source><translation>{forms}</translation></message>'


def catalogue(language: str, *messages: str, table: str = "Tessel") -> str:
    return (f'<TS version="2.1" language="{language}" sourcelanguage="en"><context><name>{table}</name>'
            f"{''.join(messages)}</context></TS>")


ENGLISH = [message("Paused", "Paused"), message("Paused", "No keys", "X11"), counted("%n apps", "%n app", "%n apps"),
           message("On · %lld keys", "On · %1")]
GERMAN = [message("Paused", "Pausiert"), message("Paused", "Keine Tasten", "X11"),
          counted("%n apps", "%n App", "%n Apps"), message("On · %lld keys", "An · %1")]


# A literal may continue in the next line, and the request for it may be elsewhere.
CODE = 'text("Tessel", "Paused");\nconstexpr auto counted = "%n "\n    "apps"; // and\n"On · %lld keys"\n'


class Catalogues(unittest.TestCase):
    def found(self, german: str, english: str = catalogue("en", *ENGLISH),
              more: dict[str, str] | None = None) -> list[str]:
        files = {"cmake/Translations.cmake": "set(TESSEL_LANGUAGES en de)\nset(TESSEL_TEXT_TABLES Tessel)\n",
                 "Resources/translations/Tessel_en.ts": english, "Resources/translations/Tessel_de.ts": german,
                 "TesselCore/Texts.cpp": CODE}
        with tempfile.TemporaryDirectory() as root:
            for name, text in (files | (more or {})).items():
                file = Path(root, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            return faults(Path(root))

    def assert_fault(self, words: str, *german: str, table: str = "Tessel", language: str = "de") -> None:
        found = self.found(catalogue(language, *german, table=table))
        self.assertTrue(any(words in fault for fault in found), found)

    def test_sound_catalogues_have_no_fault(self):
        self.assertEqual(self.found(catalogue("de", *GERMAN)), [])

    def test_missing_and_additional_texts_are_found(self):
        self.assert_fault("lacks 'Paused' X11", GERMAN[0], *GERMAN[2:])
        self.assert_fault("English has not", *GERMAN, message("Started", "Gestartet"))
        self.assert_fault("twice", *GERMAN, GERMAN[0])
        self.assert_fault("another order", *reversed(GERMAN))

    def test_unfinished_texts_are_found(self):
        self.assert_fault("not finished", GERMAN[0].replace("<translation>", '<translation type="unfinished">'),
                          *GERMAN[1:])
        for text in ("", " Pausiert", "Pausiert\n"):
            self.assert_fault("has blanks around", message("Paused", text), *GERMAN[1:])

    def test_lost_placeholders_are_found(self):
        self.assert_fault("other placeholders", *GERMAN[:3], message("On · %lld keys", "An"))
        self.assert_fault("other placeholders", *GERMAN[:3], message("On · %lld keys", "An · %lld"))
        self.assert_fault("other placeholders", *GERMAN[:2], counted("%n apps", "eine App", "%n Apps"), GERMAN[3])

    def test_a_wrong_number_of_plural_forms_is_found(self):
        self.assert_fault("1 forms", *GERMAN[:2], counted("%n apps", "%n Apps"), GERMAN[3])
        self.assert_fault("counts in other texts", *GERMAN[:2], message("%n apps", "%n Apps"), GERMAN[3])

    def test_a_file_that_says_it_is_another_is_found(self):
        self.assert_fault("another context", *GERMAN, table="Other")
        self.assert_fault("of itself", *GERMAN, language="fr")
        self.assertIn("is not XML", self.found("<TS>")[0])

    def test_a_file_too_few_or_too_many_is_found(self):
        self.assertEqual(len(self.found("", more={"Resources/translations/Tessel_fr.ts": ""})), 1)

    def test_english_has_the_words_of_the_code(self):
        self.assertIn("other words", self.found(catalogue("de", *GERMAN),
                                                catalogue("en", message("Paused", "Halted"), *ENGLISH[1:]))[0])

    def test_a_text_that_only_the_code_has_is_found(self):
        german = catalogue("de", *GERMAN)
        for name, call in {"Tessel/Row.qml": 'qsTranslate("Tessel", "{}")',
                           "Tessel/Menu.cpp": 'text("Tessel",\n"{}")'}.items():
            self.assertEqual(self.found(german, more={name: call.format("Gone")}),
                             [f"{name}: asks Tessel for 'Gone', which it has not"])
            self.assertEqual(self.found(german, more={name: call.format("Paused")}), [])

    def test_an_unused_text_is_found(self):
        unused = message("Started", "Started")
        self.assertEqual(self.found(catalogue("de", *GERMAN, unused), catalogue("en", *ENGLISH, unused)),
                         ["Tessel_en.ts: has 'Started', which nobody asks for"])


if __name__ == "__main__":
    unittest.main()
