#!/usr/bin/python3
"""Every language has all of the program's texts, complete and well-formed.

usage: catalogues.py ROOT

Prints one line for each fault and fails if there is any.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass, field
from pathlib import Path

# The number of plural forms of a counted text (Qt Linguist's rules, which are gettext's for these languages).
PLURAL_FORMS = {"de": 2, "en": 2, "es": 2, "fr": 2, "it": 2, "ja": 1, "ko": 1, "pt_BR": 2, "zh_CN": 1}

COUNTED = re.compile(r"%lld")
PLACEHOLDER = re.compile(r"%(?:n|\d)")
SOURCES = {".h", ".cpp", ".qml"}
FOLDERS = ["CorvidKit", "Tessel"]
# Sources whose texts are requested through their holder, such as an action's title or a key's label.
MORE_FOLDERS = ["CorvidKitCore", "TesselCore"]
LITERALS = re.compile(r'(?:"(?:[^"\\\n]|\\.)*"\s*)+')
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
ASKED_FOR = re.compile(r'\b(?:text|translate|qsTranslate)\(\s*"(Tessel|CorvidKit)",\s*"((?:[^"\\]|\\.)*)"')

Key = tuple[str, str]  # The English text, and the comment that distinguishes it from the same text elsewhere.


@dataclass
class Catalogue:
    translations: dict[Key, list[str]] = field(default_factory=dict)  # all plural forms
    counted: set[Key] = field(default_factory=set)  # Texts with a number, which have plural forms.
    faults: list[str] = field(default_factory=list)


def read(text: str, table: str, language: str) -> Catalogue:
    result = Catalogue()
    try:
        root = ElementTree.fromstring(text)
    except ElementTree.ParseError as error:
        result.faults.append(f"is not XML: {error}")
        return result
    if root.attrib != {"version": "2.1", "language": language, "sourcelanguage": "en"}:
        result.faults.append(f"says {root.attrib} of itself")
    if [context.findtext("name") for context in root] != [table]:
        result.faults.append(f"has another context than {table}")
    for message in root.iter("message"):
        key = (message.findtext("source", ""), message.findtext("comment", ""))
        if key in result.translations:
            result.faults.append(f"has {key[0]!r} twice")
        translation = message.find("translation")
        if translation is None or translation.attrib:
            result.faults.append(f"has not finished {key[0]!r}")
            continue
        forms = translation.findall("numerusform")
        if message.get("numerus") == "yes":
            result.counted.add(key)
        result.translations[key] = [form.text or "" for form in forms or [translation]]
    return result


def placeholders(source: str) -> list[str]:
    """The required placeholders of a translation: a counted part of the English text is a separate text in the
    others."""
    return sorted([f"%{number}" for number, _ in enumerate(COUNTED.findall(source), start=1)]
                  + PLACEHOLDER.findall(source))


def faults_of(catalogue: Catalogue, english: Catalogue, language: str) -> list[str]:
    found = list(catalogue.faults)
    found += [f"lacks {key[0]!r} {key[1]}".strip() for key in english.translations if key not in catalogue.translations]
    found += [f"has {key[0]!r} {key[1]}, English has not" for key in catalogue.translations
              if key not in english.translations]
    if list(catalogue.translations) != list(english.translations) and not found:
        found.append("has the texts in another order than English")
    if catalogue.counted != english.counted:
        found.append("counts in other texts than English")
    for (source, comment), forms in catalogue.translations.items():
        is_counted = (source, comment) in english.counted
        wanted = PLURAL_FORMS.get(language, 0) if is_counted else 1
        if len(forms) != wanted:
            found.append(f"has {len(forms)} forms of {source!r}, not {wanted}")
        for form in forms:
            if form != form.strip() or not form:
                found.append(f"has blanks around {form!r}, or nothing")
            if sorted(PLACEHOLDER.findall(form)) != placeholders(source) or COUNTED.search(form):
                found.append(f"has other placeholders than {placeholders(source)} in {form!r}")
        if language == "en" and not comment and not is_counted and not COUNTED.search(source) and forms != [source]:
            found.append(f"has other words than {source!r}: {forms}")
    return found


def sources(root: Path, folders: list[str]) -> list[Path]:
    return sorted(file for folder in folders for file in (root / folder).rglob("*") if file.suffix in SOURCES)


def asked_for(root: Path) -> list[tuple[str, str, str]]:
    """File, table and English text of each request for a literal text in the sources below `root`."""
    return [(file.relative_to(root).as_posix(), table, text.replace('\\"', '"')) for file in sources(root, FOLDERS)
            for table, text in ASKED_FOR.findall(file.read_text(encoding="utf-8"))]


def written(root: Path) -> set[str]:
    """All texts in the sources below `root`; consecutive literals are one."""
    return {"".join(LITERAL.findall(literals)).replace('\\"', '"') for file in sources(root, FOLDERS + MORE_FOLDERS)
            for literals in LITERALS.findall(file.read_text(encoding="utf-8"))}


def listed(root: Path, name: str) -> list[str]:
    """A list of the build, by its name."""
    text = (root / "cmake/Translations.cmake").read_text(encoding="utf-8")
    found = re.search(rf"^set\({name} ([^)]+)\)", text, re.MULTILINE)
    return found[1].split() if found else []


def faults(root: Path) -> list[str]:
    folder = root / "Resources/translations"
    languages, tables = listed(root, "TESSEL_LANGUAGES"), listed(root, "TESSEL_TEXT_TABLES")
    wanted = {f"{table}_{language}.ts" for table in tables for language in languages}
    there = {file.name for file in folder.glob("*.ts")}
    if not wanted or wanted != there:
        return [f"cmake/Translations.cmake and {folder.relative_to(root)} do not agree: {sorted(wanted ^ there)}"]
    found, in_code = [], written(root)
    for table in tables:
        catalogues = {language: read((folder / f"{table}_{language}.ts").read_text(encoding="utf-8"), table, language)
                      for language in languages}
        english = catalogues["en"]
        if not english.translations:
            found.append(f"{table}_en.ts: has no texts")
        for language, catalogue in catalogues.items():
            found += [f"{table}_{language}.ts: {fault}" for fault in faults_of(catalogue, english, language)]
        known = {source for source, _ in english.translations}
        found += [f"{file}: asks {table} for {text!r}, which it has not"
                  for file, asked, text in asked_for(root) if asked == table and text not in known]
        found += [f"{table}_en.ts: has {text!r}, which nobody asks for" for text in sorted(known - in_code)]
    return found


def main() -> int:
    found = faults(Path(sys.argv[1]))
    for fault in found:
        print(fault)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
